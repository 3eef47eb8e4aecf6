#pragma once

#include "app/BusinessDay.h"

#include <QString>

#include <vector>

/// The marks that bookings of other hours and fields leave in a row's booker text.
namespace BookerMark {

inline constexpr QChar extraTime{0x02C6}; ///< character 136 of Windows-1252
inline const QString sharedBooking = QStringLiteral("Shared Booking");
inline const QString partiallyShared = QStringLiteral("Partially Shared");

} // namespace BookerMark

/// True for a name that reads as one of these marks, in whatever letters: a booker must not have it.
inline bool isMarkerText(const QString &name)
{
    return name.contains(BookerMark::extraTime) || name.contains(BookerMark::sharedBooking, Qt::CaseInsensitive) ||
           name.contains(BookerMark::partiallyShared, Qt::CaseInsensitive);
}

/// Of several rows of a slot the booker is shown, whatever marks of shared ground stand beside: true when `name` takes
/// the place of the one that was met before it.
inline bool takesPlaceOf(const QString &before, const QString &name)
{
    return before.isEmpty() || (isMarkerText(before) && !isMarkerText(name));
}

/// One hour of the business day as the grid shows it.
struct DayRow
{
    int hour = 0;            ///< 24 for midnight
    QString hourRange = {};  ///< column 0: "08:00 to 09:00"
    QString twelveHour = {}; ///< column 1: "08:00 AM"
    QString booker = {};     ///< column 2: the booker's name, a marker text or the extra time of the hour before
    QString telephone = {};  ///< column 3
    QString paid = {};       ///< column 4: empty, or "Paid" and the amount
    /// Extra time on another field runs into this hour's ground; the booker text says on which.
    bool isGroundTaken = false;

    /// "hh:mm", midnight "24:00".
    [[nodiscard]] QString hourText() const { return hourRange.left(5); }
    [[nodiscard]] bool isFree() const { return booker.isEmpty(); }
    [[nodiscard]] bool isPaid() const { return !paid.isEmpty(); }
    [[nodiscard]] bool isExtraTime() const { return booker.contains(BookerMark::extraTime); }
    [[nodiscard]] bool isSharedBooking() const { return booker.contains(BookerMark::sharedBooking); }
    [[nodiscard]] bool isPartiallyShared() const { return booker.contains(BookerMark::partiallyShared); }
};

/// The rows that staff selected on one day of one field, with the whole day round them.
struct DaySelection
{
    QString day;               ///< "yyyy-mm-dd"
    int field = 0;             ///< from 0
    std::vector<DayRow> rows;  ///< the day, first hour to last
    std::vector<int> selected; ///< indexes into rows, ascending
    int current = -1;          ///< the row that operations on a single slot mean, -1 for none

    [[nodiscard]] SlotKey slotOf(const DayRow &row) const { return {day, row.hourText(), field}; }
    [[nodiscard]] const DayRow &row(int index) const { return rows.at(std::size_t(index)); }
};
