#include "schedule/DaySchedule.h"

#include "app/Formats.h"
#include "app/SqlText.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int minutesOfQuarter = 15;
constexpr int midnight = 24;
constexpr char16_t codeBeforeQuarter = 187; // 188, 189 and 190 are one quarter, one half and three quarters

QString extraTimeText(int minutes)
{
    const auto quarters = static_cast<char16_t>(std::lround(double(minutes) / minutesOfQuarter));
    return BookerMark::extraTime + u" + "_s + QChar(static_cast<char16_t>(codeBeforeQuarter + quarters)) + u" hour "_s;
}

QString paidText(double amount)
{
    return amount > 0 ? u"Paid "_s + formatNumber(amount, u"##,##0.00"_s) : QString();
}

int storedHourOf(const DbRows &booking)
{
    constexpr qsizetype hourPosition = 11;
    return booking.text("b_datetime").mid(hourPosition, 2).toInt();
}

QString hourCondition(const QString &day, int hour)
{
    return u" from tbl_booking where b_datetime=\""_s + day + u' ' + formatTwoDigits(hour) +
           u":00:00\" ORDER BY b_field ASC;"_s;
}

QString playersOf(DbRows rows)
{
    QString lines;
    while (rows.next())
        lines += rows.text("b_field") + u" - "_s + rows.text("b_bookername") + u"\r\n"_s;
    return lines;
}

std::size_t rowOfHour(const std::vector<DayRow> &rows, int hour)
{
    const auto row = std::find_if(rows.cbegin(), rows.cend(), [hour](const DayRow &r) { return r.hour == hour; });
    return std::size_t(row - rows.cbegin());
}

void showBookings(std::vector<DayRow> &rows, DbConnection &connection, const QString &day, int field)
{
    std::vector<int> extraMinutes(rows.size() + 1, 0);
    DbRows bookings = connection.query(sql(u"SELECT b_datetime, b_bookername,b_bookertel,b_paid,b_extratime from "
                                           "tbl_booking where b_datetime LIKE '%%1%' AND b_field=%2;"_s,
                                           day, field));
    while (bookings.next()) {
        const std::size_t index = rowOfHour(rows, storedHourOf(bookings));
        if (index == rows.size())
            continue;
        // A booker is shown, whatever marks of shared ground stand beside it.
        DayRow &row = rows[index];
        const QString booker = bookings.text("b_bookername");
        if (takesPlaceOf(row.booker, booker)) {
            row.booker = booker;
            row.telephone = bookings.text("b_bookertel");
            row.paid = paidText(bookings.amount("b_paid"));
        }
        // A marker row beside the booking has no extra time of its own and takes none away.
        extraMinutes[index + 1] = std::max(extraMinutes[index + 1], bookings.number("b_extratime"));
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (extraMinutes[i] > 0 && rows[i].isFree())
            rows[i].booker = extraTimeText(extraMinutes[i]);
}

void showTakenGround(std::vector<DayRow> &rows, DbConnection &connection, const Station &station, const QString &day,
                     int field)
{
    QStringList others;
    for (const int other : station.shared.onSameGround(field))
        others << QString::number(other);
    if (others.isEmpty())
        return;
    DbRows extended = connection.query(sql(u"SELECT b_datetime, b_field, b_extratime FROM tbl_booking WHERE b_datetime "
                                           "LIKE '%1%' AND b_field IN (%2) AND b_extratime>0"_s,
                                           day, others.join(u", "_s)));
    while (extended.next()) {
        const std::size_t next = rowOfHour(rows, storedHourOf(extended)) + 1;
        if (next >= rows.size() || !rows[next].isFree())
            continue;
        rows[next].booker = sql(u"Taken: %2 +%1 min"_s, extended.number("b_extratime"),
                                station.settings.fieldName(extended.number("b_field")));
        rows[next].isGroundTaken = true;
    }
}

} // namespace

std::vector<DayRow> emptyDay(WorkingHours hours)
{
    std::vector<DayRow> rows;
    for (const int hour : hoursOfDay(hours))
        rows.push_back({hour, hourRangeText(hour), twelveHourText(hour)});
    return rows;
}

DaySchedule readDay(Station &station, const QString &day, int field)
{
    DaySchedule schedule{emptyDay(station.hours()), {}, {}, {}};
    auto &rows = schedule.rows;
    DbConnection connection(station.database);
    showBookings(rows, connection, day, field);
    showTakenGround(rows, connection, station, day, field);

    const auto playersAt = [&](int clockHour) {
        const int hour = (clockHour + midnight) % midnight;
        return playersOf(
            connection.query(u"SELECT b_bookername, b_field"_s + hourCondition(day, hour == 0 ? midnight : hour)));
    };
    const int presentHour = station.now().time().hour();
    schedule.currentPlayers = playersAt(presentHour);
    schedule.previousPlayers = playersAt(presentHour - 1);
    schedule.nextPlayers = playersAt(presentHour + 1);
    return schedule;
}

QString RefreshList(Database &database, const QString &day, int hour)
{
    DbConnection connection(database);
    return playersOf(connection.query(u"SELECT *"_s + hourCondition(day, hour)));
}

QString stateInWords(RowState state)
{
    switch (state) {
    case RowState::Free:
        return u"free"_s;
    case RowState::Booked:
        return u"booked"_s;
    case RowState::Paid:
        return u"paid"_s;
    case RowState::Shared:
        return u"shared"_s;
    case RowState::ExtraTime:
        return u"extra time"_s;
    case RowState::Past:
        return u"past"_s;
    case RowState::NotRead:
        break;
    }
    return u"not read"_s;
}

RowState stateOf(const DayRow &row, bool isPast)
{
    if (row.isFree())
        return isPast ? RowState::Past : RowState::Free;
    if (row.isExtraTime() || row.isGroundTaken)
        return RowState::ExtraTime;
    if (row.isSharedBooking() || row.isPartiallyShared())
        return RowState::Shared;
    return row.isPaid() ? RowState::Paid : RowState::Booked;
}
