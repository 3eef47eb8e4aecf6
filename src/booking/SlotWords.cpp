#include "booking/SlotWords.h"

#include "app/Formats.h"

#include <QLocale>
#include <QStringList>

using namespace Qt::StringLiterals;

QString dayInWords(const QString &day)
{
    const QDate date = QDate::fromString(day, Qt::ISODate);
    return date.isValid() ? weekdayName(date) + QLocale::c().toString(date, u" d MMMM yyyy"_s) : day;
}

QString hoursInWords(const DaySelection &selection)
{
    QStringList ranges;
    int previous = -1;
    for (const int index : selection.selected) {
        const QString range = selection.row(index).hourRange;
        if (previous >= 0 && index == previous + 1)
            ranges.last().replace(ranges.last().size() - 5, 5, range.right(5));
        else
            ranges += range;
        previous = index;
    }
    return ranges.join(u", "_s);
}

QString slotInWords(const Station &station, const SlotKey &slot)
{
    return station.settings.FieldDisplayNames.at(std::size_t(slot.field)) + u", "_s + dayInWords(slot.day) + u", "_s +
           slot.hourText;
}
