#pragma once

#include "app/DayRow.h"
#include "app/Station.h"

/// Sets the current slot's extra minutes (15, 30 or 45), which run into the following hour (tbl_booking.b_extratime,
/// tbl_remark). Refused when the slot is somebody else's by now, or when the ground of the following hour is sold, on
/// this field or another. False when it was refused or not verified. Throws DbError and NotDone.
bool AddExtraTime(Station &station, const DaySelection &selection, qint16 minutes);

/// mnu_ClearAddition: sets the current slot's extra minutes to 0, before the booked hour has begun. As AddExtraTime.
bool clearExtraTime(Station &station, const DaySelection &selection);
