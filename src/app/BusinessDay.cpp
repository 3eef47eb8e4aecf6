#include "app/BusinessDay.h"

#include "app/Formats.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int midnight = 24;
constexpr int noon = 12;

} // namespace

std::vector<int> hoursOfDay(WorkingHours hours)
{
    std::vector<int> day;
    for (int hour = hours.first; hour < midnight; ++hour)
        day.push_back(hour);
    day.push_back(midnight);
    for (int hour = 1; hour <= hours.last; ++hour)
        day.push_back(hour);
    return day;
}

QString hourRangeText(int hour)
{
    const int next = hour == midnight ? 1 : hour + 1;
    return formatTwoDigits(hour) + u":00 to "_s + formatTwoDigits(next) + u":00"_s;
}

QString twelveHourText(int hour)
{
    if (hour == midnight)
        return u"12:00 AM"_s;
    if (hour == noon)
        return u"12:00 PM"_s;
    return formatTwoDigits(hour < noon ? hour : hour - noon) + (hour < noon ? u":00 AM"_s : u":00 PM"_s);
}

int rowOfClockHour(WorkingHours hours, int clockHour)
{
    const auto day = hoursOfDay(hours);
    const auto row = std::find(day.cbegin(), day.cend(), clockHour == 0 ? midnight : clockHour);
    return row == day.cend() ? -1 : int(row - day.cbegin());
}

QDate AdjustableDate(const QDateTime &now, WorkingHours hours)
{
    const int hour = now.time().hour();
    if (hour > hours.first)
        return now.date();
    if (hour > 0 && hour < hours.last)
        return now.date().addDays(-1);
    return {};
}

QDate ExactDate(const QString &timeText, const QString &dayText, WorkingHours hours)
{
    const QDate day = QDate::fromString(dayText, Qt::ISODate);
    if (timeText == u"24:00")
        return day.addDays(1);
    const int hour = timeText.left(2).toInt();
    if (hour >= hours.first && hour < midnight)
        return day;
    if (hour > 0 && hour < hours.last + 1)
        return day.addDays(1);
    return {};
}

qint64 hourDifference(const QDateTime &from, const QDateTime &to)
{
    const auto hoursSinceEpoch = [](const QDateTime &moment) {
        return moment.date().toJulianDay() * 24 + moment.time().hour();
    };
    return hoursSinceEpoch(to) - hoursSinceEpoch(from);
}

qint64 hoursUntil(const QDateTime &now, const QString &dayText, const QString &hourText, WorkingHours hours)
{
    const QDate date = ExactDate(hourText, dayText, hours);
    if (!date.isValid())
        return hourDifference(now, QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC));
    const int clockHour = hourText.left(2).toInt() % midnight;
    // The zone plays no part; to look up the local one costs as much as all the rest.
    return hourDifference(now, QDateTime(date, QTime(clockHour, 0), Qt::UTC));
}

QString StoredHour::dateTimeText() const
{
    return sqlDate(day) + u' ' + formatTwoDigits(hour) + u":00:00"_s;
}

StoredHour storedHour(const QDateTime &moment, WorkingHours hours)
{
    const int hour = moment.time().hour();
    if (hour == 0)
        return {moment.date().addDays(-1), midnight};
    if (hour <= hours.last)
        return {moment.date().addDays(-1), hour};
    return {moment.date(), hour};
}
