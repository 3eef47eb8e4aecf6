#pragma once

#include "app/DayRow.h"
#include "app/Station.h"

/// The price of one hour (tbl_rate), 0 when no row matches. The hour 24 counts as 0; dayName is the weekday's full
/// English name. Throws DbError.
double CalcFieldRate(Database &database, qint16 field, qint16 hour, const QString &dayName, const QString &rateType);

/// The weekday name and hour under which a slot's price is found.
QString rateDayName(const QString &dayText);

/// mnu_SetNormal, mnu_SetMember, mnu_setStudent, mnu_SetSpecialGroup: gives the current slot another rate type after an
/// administrator confirmed it. False when it was refused or not confirmed. Throws DbError.
bool changeRateType(Station &station, const DaySelection &selection, const QString &rateType);

/// Writes the slot's rate type (tbl_booking.b_specialrate) and its remark (tbl_remark). Gives what stood against it:
/// the slot is paid or somebody else's by now; empty when it is done. Throws DbError and NotDone.
QString SetMembershipStatus(Station &station, const QString &staff, const DaySelection &selection,
                            const QString &rateType);
