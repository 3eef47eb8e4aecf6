#include "reportserver/BookingFigures.h"

#include "app/Database.h"
#include "app/DayRow.h"
#include "app/SqlText.h"
#include "reportserver/Money.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <tuple>

using namespace Qt::StringLiterals;

void BookedSum::add(const ReportedHour &hour)
{
    ++hours;
    paidHours += hour.isPaid() ? 1 : 0;
    extraMinutes += hour.extraMinutes;
    paid += hour.paid;
}

BookedSum BookingFigures::sum() const
{
    BookedSum all;
    for (const ReportedHour &hour : hours)
        all.add(hour);
    return all;
}

std::map<int, BookedSum> BookingFigures::sumByField() const
{
    std::map<int, BookedSum> sums;
    for (const ReportedHour &hour : hours)
        sums[hour.field].add(hour);
    return sums;
}

std::map<int, int> BookingFigures::takenByField() const
{
    std::set<std::tuple<int, QString, int>> taken;
    for (const auto *list : {&hours, &marks})
        for (const ReportedHour &hour : *list)
            taken.emplace(hour.field, hour.day, hour.hour);
    std::map<int, int> counts;
    for (const auto &[field, day, hour] : taken)
        ++counts[field];
    return counts;
}

int BookingFigures::allWaiting() const
{
    return std::accumulate(waiting.begin(), waiting.end(), 0,
                           [](int count, const auto &entry) { return count + entry.second; });
}

int placeInDay(int hour, WorkingHours hours)
{
    constexpr int midnight = 24;
    return hour <= hours.last ? hour + midnight : hour;
}

BookingFigures readBookings(DbConnection &connection, const ReportPeriod &period, WorkingHours hours)
{
    BookingFigures figures;
    DbRows rows = connection.query(
        sql(u"SELECT b_datetime, b_field, b_bookername, b_bookerorg, b_bookertel, b_specialrate, b_extratime, b_paid "
            "FROM tbl_booking WHERE b_datetime BETWEEN '%1' AND '%2' AND b_bookername<>''"_s,
            period.firstSlotText(), period.lastSlotText()));
    while (rows.next()) {
        const QString slot = rows.text("b_datetime");
        ReportedHour hour{slot.left(10), slot.mid(11, 2).toInt(), rows.number("b_field"), rows.text("b_bookername")};
        if (hour.booker == BookerMark::sharedBooking || hour.booker == BookerMark::partiallyShared) {
            figures.marks.push_back(std::move(hour));
            continue;
        }
        hour.organisation = rows.text("b_bookerorg");
        hour.telephone = rows.text("b_bookertel");
        hour.rateType = rows.text("b_specialrate");
        hour.extraMinutes = rows.number("b_extratime");
        hour.paid = toCents(rows.text("b_paid"));
        figures.hours.push_back(std::move(hour));
    }
    const auto place = [hours](const ReportedHour &hour) {
        return std::tuple(hour.day, placeInDay(hour.hour, hours), hour.field);
    };
    std::sort(figures.hours.begin(), figures.hours.end(),
              [&](const ReportedHour &one, const ReportedHour &other) { return place(one) < place(other); });
    DbRows waiting = connection.query(sql(u"SELECT w_field, COUNT(*) AS entries FROM tbl_waitlist WHERE w_datetime "
                                          "BETWEEN '%1' AND '%2' GROUP BY w_field"_s,
                                          period.firstSlotText(), period.lastSlotText()));
    while (waiting.next())
        figures.waiting[waiting.number("w_field")] = waiting.number("entries");
    return figures;
}
