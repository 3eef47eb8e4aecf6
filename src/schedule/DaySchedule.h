#pragma once

#include "app/DayRow.h"
#include "app/Station.h"

#include <QStringList>

/// One field's business day as the database holds it, with who plays on all fields round the present hour.
struct DaySchedule
{
    std::vector<DayRow> rows;
    /// One line for each booking of the hour in field order: field number, " - ", booker, CR LF.
    QString currentPlayers;
    QString previousPlayers;
    QString nextPlayers;
};

/// The rows of a business day without any booking.
std::vector<DayRow> emptyDay(WorkingHours hours);

/// Reads a day "yyyy-mm-dd" of one field (tbl_booking). Extra time stands in the row after its slot, unless that row
/// has a booking of its own, also where it was booked on a field that has ground in common with this one; a booking
/// whose hour fits no row is left out. Throws DbError.
DaySchedule readDay(Station &station, const QString &day, int field);

/// All bookings of one hour (24 for midnight) of a day, lines as in DaySchedule. Throws DbError.
QString RefreshList(Database &database, const QString &day, int hour);

/// What a row looks like, in words and colour.
enum class RowState { Free, Booked, Paid, Shared, ExtraTime, Past, NotRead };

/// "free", "past", "booked", "paid", "shared", "extra time" or "not read".
QString stateInWords(RowState state);

/// The state of a row; Past is a free row whose hour is over.
RowState stateOf(const DayRow &row, bool isPast);
