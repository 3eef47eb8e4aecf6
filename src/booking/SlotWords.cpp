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

QString taskInWords(const QString &task, const AppSettings &settings, const DaySelection &selection)
{
    const bool one = selection.selected.size() == 1;
    const QString hours = one ? selection.row(selection.selected.front()).hourText() : hoursInWords(selection);
    return taskInWords(task, settings, SlotKey{selection.day, hours, selection.field});
}

QString taskInWords(const QString &task, const AppSettings &settings, const SlotKey &slot)
{
    return task + u' ' + settings.fieldName(slot.field) + u", "_s + slot.hourText;
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
    return station.settings.fieldName(slot.field) + u", "_s + dayInWords(slot.day) + u", "_s + slot.hourText;
}
