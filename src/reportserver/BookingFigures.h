#pragma once

#include "reportserver/ReportPeriod.h"

#include <QString>

#include <map>
#include <vector>

class DbConnection;

/// One booked hour; money in cents.
struct ReportedHour
{
    QString day; ///< "yyyy-mm-dd" of the business day
    int hour = 0;
    int field = 0;
    QString booker;
    QString organisation = {};
    QString telephone = {};
    QString rateType = {};
    int extraMinutes = 0;
    qint64 paid = 0;

    [[nodiscard]] bool isPaid() const { return paid > 0; }
};

/// How much was booked of something: of a field, or of all.
struct BookedSum
{
    int hours = 0;
    int paidHours = 0;
    int extraMinutes = 0;
    qint64 paid = 0; ///< in cents

    void add(const ReportedHour &hour);
    [[nodiscard]] int unpaidHours() const { return hours - paidHours; }
};

/// What the booking tables hold of a period.
struct BookingFigures
{
    std::vector<ReportedHour> hours; ///< by day, then as the day runs, then by field
    std::vector<ReportedHour> marks; ///< ground that a booking of another field takes: day, hour and field alone
    std::map<int, int> waiting;      ///< entries of the waiting list by field

    [[nodiscard]] BookedSum sum() const;
    /// Hours on which nobody else can be booked, by field: the booked ones, and those whose ground is taken.
    [[nodiscard]] std::map<int, int> takenByField() const;
    [[nodiscard]] std::map<int, BookedSum> sumByField() const;
    [[nodiscard]] int allWaiting() const;
};

/// Throws DbError.
BookingFigures readBookings(DbConnection &connection, const ReportPeriod &period, WorkingHours hours);

/// Where an hour comes on its business day: those after midnight come last.
int placeInDay(int hour, WorkingHours hours);
