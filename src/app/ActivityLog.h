#pragma once

#include "app/Station.h"

class Operation;

/// One row in tbl_log: this counter, the staff name, now, and what was done. Neither text is escaped. An error is
/// shown with code 2 and goes no further.
void WriteActivityLog(Station &station, const QString &staffName, const QString &action);

/// That row's statement, for an operation that is to leave it together with its other rows.
QString activityLogStatement(const Station &station, const QString &staffName, const QString &action);

/// The same row as a part of an operation, whose proof it is: what was done and the row that tells of it stand together
/// or not at all. The texts may hold anything. Throws DbError.
void logWithin(Operation &operation, const Station &station, const QString &staffName, const QString &action);
