#pragma once

#include "app/Database.h"

/// Who serves a counter and whether its shift is closed: the counter's row of tbl_system. All throw DbError.

/// The login name of the staff member serving the counter; empty when it has no row.
QString GetCounterStaff(Database &database, int counter);
/// The login name goes into the statement unescaped.
void SetCounterStaff(Database &database, int counter, const QString &login);
/// Status 0: the shift is open; 1: it was closed.
void SetCounterStaffShiftStatus(Database &database, int counter, int status);

/// The statements of the two, for an operation that does more with them.
QString counterStaffStatement(int counter, const QString &login);
QString counterShiftStatement(int counter, int status);
