#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

/// The business day: it runs from the first working hour to midnight and past it to the last one. Hours after midnight
/// keep the date of the day on which they began, and midnight is hour 24.
struct WorkingHours
{
    int first = 0; ///< StartOfWorkingHour, 0 to 23
    int last = 0;  ///< EndOfWorkingHour, 0 to 23, an hour after midnight
};

/// One field for one hour of one business day. Its stored form is the text dateTimeText() and the field number.
struct SlotKey
{
    QString day;      ///< "yyyy-mm-dd" of the business day
    QString hourText; ///< "hh:mm", midnight "24:00"
    int field = 0;    ///< from 0

    /// "yyyy-mm-dd hh:mm:ss" with hour 24 for midnight.
    [[nodiscard]] QString dateTimeText() const { return day + u' ' + hourText + QStringLiteral(":00"); }

    bool operator==(const SlotKey &) const = default;
};

/// The hours of one business day in the order of the grid's rows, midnight as 24.
std::vector<int> hoursOfDay(WorkingHours hours);

/// The grid's first two columns for an hour: "08:00 to 09:00" and "08:00 AM".
QString hourRangeText(int hour);
QString twelveHourText(int hour);

/// The row of the present clock hour (0 to 23) in hoursOfDay(), -1 outside the working hours.
int rowOfClockHour(WorkingHours hours, int clockHour);

/// The business date of this moment. Null at the start hour itself, at the end hour, and outside the working hours.
QDate AdjustableDate(const QDateTime &now, WorkingHours hours);

/// The calendar date on which the hour "hh:mm" of the business day "yyyy-mm-dd" really falls; null for an hour outside
/// the working hours ("00:00" among them: midnight is "24:00").
QDate ExactDate(const QString &timeText, const QString &dayText, WorkingHours hours);

/// How many clock-hour boundaries lie between two moments; minutes play no part, negative when `to` is earlier.
qint64 hourDifference(const QDateTime &from, const QDateTime &to);

/// hourDifference from now to the start of an hour of a business day. An hour outside the working hours is far past.
qint64 hoursUntil(const QDateTime &now, const QString &dayText, const QString &hourText, WorkingHours hours);

/// A moment's hour as it is stored: business date and hour, midnight as 24 and the hours up to the last working hour
/// under the date before.
struct StoredHour
{
    QDate day;
    int hour = 0;

    /// "yyyy-mm-dd hh:00:00"
    [[nodiscard]] QString dateTimeText() const;
};
StoredHour storedHour(const QDateTime &moment, WorkingHours hours);
