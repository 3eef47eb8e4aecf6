#include "booking/BlockBooking.h"

#include "app/Formats.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

bool Block_Booking(Station &station, BookingClipboard &clipboard, ClipboardSource source, const QString &staff,
                   const QString &date, const DaySelection &selection, std::vector<BlockBookingHour> &results)
{
    const auto booker = clipboardBooker(station, clipboard, source);
    if (!booker)
        return false;
    for (const int index : selection.selected) {
        const QString hour = selection.row(index).hourText();
        const BookingOutcome outcome =
            pasteOn(station, clipboard, staff, {date, hour, selection.field}, *booker, source);
        if (outcome == BookingOutcome::EntryGone) {
            station.prompts.refuse(refusalText(outcome));
            return false;
        }
        results.push_back({date, hour, outcome});
    }
    return true;
}

void bookBlock(Station &station, BookingClipboard &clipboard, const DaySelection &selection, int weeks,
               const std::function<void(int week)> &progress, std::vector<BlockBookingHour> &results)
{
    constexpr int daysOfWeek = 7;
    const auto verification = station.prompts.verifyStaff(taskInWords(u"Block book"_s, station.settings, selection) +
                                                          u", "_s + QString::number(weeks) + u" weeks"_s);
    if (!verification)
        return;
    const ClipboardSource source = clipboard.source();
    QDate date = QDate::fromString(selection.day, Qt::ISODate);
    for (int week = 1; week <= weeks; ++week, date = date.addDays(daysOfWeek)) {
        if (!Block_Booking(station, clipboard, source, verification->staffName, sqlDate(date), selection, results))
            return;
        progress(week);
    }
}
