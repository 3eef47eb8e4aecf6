#pragma once

#include "app/Station.h"

/// Keeps only the characters 0-9, A-Z and a-z, in their order.
QString cleanCredential(const QString &text);

/// Lets a staff member take this counter: checks tbl_staff, then records who serves the counter (tbl_system),
/// CurrentStaff, the activity "logging in" (tbl_log) and the last login. False when no row carries just this login and
/// password. Throws DbError.
bool logIn(Station &station, const QString &login, const QString &password);

/// Stamps tbl_staff.st_lastlogin with now. Throws DbError.
void UpdateLastLogin(Station &station, const QString &login);
/// Its statement, for an operation that does more with it.
QString lastLoginStatement(const Station &station, const QString &login);

/// True when an administrator's row of tbl_staff carries this login and password. Throws DbError.
bool isAdministrator(Database &database, const QString &login, const QString &password);

/// The access level of the staff member with this login and password, nothing when there is none. Throws DbError.
std::optional<Verification> findStaff(Database &database, const QString &login, const QString &password);
