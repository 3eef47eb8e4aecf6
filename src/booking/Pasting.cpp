#include "booking/Pasting.h"

#include "app/SqlText.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

namespace {

bool isOnWaitingList(DbConnection &connection, const QString &id)
{
    return connection.query(sql(u"SELECT * FROM tbl_waitlist where w_id='%1'"_s, id)).size() > 0;
}

// The waiting-list clipboard is one table for all counters: its row must be the entry that this counter cut. Another
// counter may have cut the same entry and booked it already, or deleted it.
std::optional<Booker> cutBooker(Station &station, const BookingClipboard &clipboard)
{
    DbConnection connection(station.database);
    DbRows rows = connection.query(u"SELECT * FROM tbl_waitlist_clipboard"_s);
    std::optional<Booker> booker;
    while (rows.next() && !booker) {
        WaitingEntry held = waitingEntryOf(rows);
        held.id = clipboard.waitingListId;
        if (held == clipboard.cut)
            booker = held.booker;
    }
    if (!booker) {
        station.prompts.inform(u"The waiting-list entry that you took is no longer held for pasting: another counter "
                               u"has taken an entry since. Nothing was booked. Take the entry from the list again."_s);
    } else if (clipboard.fromWaitingList && !isOnWaitingList(connection, clipboard.waitingListId)) {
        station.prompts.inform(u"The waiting-list entry that you took is no longer on the list: it was booked or "
                               u"deleted since. Nothing was booked."_s);
        return std::nullopt;
    }
    return booker;
}

std::optional<Booker> copiedBooker(Station &station, const BookingClipboard &clipboard)
{
    const SlotKey &slot = clipboard.copied.value();
    DbConnection connection(station.database);
    DbRows rows = connection.query(sql(u"SELECT * FROM %1 where b_datetime='%2' AND b_field=%3"_s,
                                       clipboardTable(station), slot.dateTimeText(), slot.field));
    if (rows.next())
        return bookerOf(rows);
    station.prompts.inform(u"The copied booking is no longer on this counter's clipboard. Nothing was booked. "
                           u"Copy the booking again."_s);
    return std::nullopt;
}

} // namespace

std::optional<Booker> clipboardBooker(Station &station, const BookingClipboard &clipboard, ClipboardSource source)
{
    switch (source) {
    case ClipboardSource::WaitingList:
        return cutBooker(station, clipboard);
    case ClipboardSource::CopiedSlot:
        return copiedBooker(station, clipboard);
    case ClipboardSource::Nothing:
        break;
    }
    station.prompts.inform(u"There is nothing to paste: copy a booking or take a waiting-list entry first."_s);
    return std::nullopt;
}

BookingOutcome pasteOn(Station &station, BookingClipboard &clipboard, const QString &staff, const SlotKey &slot,
                       const Booker &booker, ClipboardSource source)
{
    BookingRequest request{slot, booker};
    if (source == ClipboardSource::WaitingList && clipboard.fromWaitingList)
        request.fromWaitingList = clipboard.waitingListId;
    const BookingOutcome outcome = doBooking(station, staff, request);
    if (outcome == BookingOutcome::Booked && request.fromWaitingList)
        clipboard.fromWaitingList = false;
    return outcome;
}

bool pasteSelection(Station &station, BookingClipboard &clipboard, const DaySelection &selection)
{
    const ClipboardSource source = clipboard.source();
    const auto booker = clipboardBooker(station, clipboard, source);
    if (!booker)
        return false;
    const auto verification = station.prompts.verifyStaff(taskInWords(u"Paste on"_s, station.settings, selection));
    if (!verification)
        return false;
    for (const int index : selection.selected) {
        const BookingOutcome outcome = pasteOn(station, clipboard, verification->staffName,
                                               selection.slotOf(selection.row(index)), *booker, source);
        if (outcome != BookingOutcome::Booked)
            station.prompts.refuse(refusalText(outcome));
        if (outcome == BookingOutcome::EntryGone)
            break;
    }
    return true;
}
