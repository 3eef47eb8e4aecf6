#pragma once

#include "app/DayRow.h"
#include "app/Operation.h"
#include "app/Station.h"

#include <optional>

/// What is sold is the ground: an hour of a field can be taken by its own row, by a booking on a field that has ground
/// in common with it, and by the extra time of the hour before on any of them.

/// The locks that keep other counters from these hours of the slot's ground; none for a field that shares nothing.
QStringList groundLocks(const Station &station, const SlotKey &slot, bool andNextHour = false);

/// The hours of a business day round one of them, as "hh:mm"; empty beyond its ends.
QString hourBefore(const QString &hourText, WorkingHours hours);
QString hourAfter(const QString &hourText, WorkingHours hours);

/// How the tables are looked at: as the operation's transaction saw them first, or as they are by now, so that no other
/// counter can change what was seen before the operation ends.
enum class GroundLook { Snapshot, Locking };

/// True when somebody stands on the slot's ground besides what its own row tells: a booker on another field with ground
/// in common, or extra time of the hour before. A booker on the whole that a part belongs to is left to the part's own
/// row. Reads tbl_booking.
bool isGroundTaken(Operation &operation, const Station &station, const SlotKey &slot, GroundLook look);

/// True when extra time of the slot would run into ground that is sold in the following hour, on its own field or on
/// another one. Reads tbl_booking. On a field without a lock the slot must be held already: a booking of the following
/// hour looks at it before it ends, so that one of the two sees the other.
bool isNextHourSold(Operation &operation, const Station &station, const SlotKey &slot);

/// Who holds a slot by now: the booker, or a marker text where no booker stands.
struct SlotHolder
{
    QString name;
    bool isPaid = false;
};

/// Looks at the slot and keeps it from other counters until the operation ends; nothing for a free one. Reads
/// tbl_booking.
std::optional<SlotHolder> holdSlot(Operation &operation, const SlotKey &slot);

/// What staff are told of an hour that extra time on another field takes.
QString groundTakenText();

/// What staff are told when the hour belongs to somebody else by now.
QString changedMeanwhile(const QString &holder);
