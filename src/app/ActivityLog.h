#pragma once

#include "app/Station.h"

/// One row in tbl_log: this counter, the staff name, now, and what was done. Neither text is escaped. An error is
/// shown with code 2 and goes no further.
void WriteActivityLog(Station &station, const QString &staffName, const QString &action);

/// That row's statement, for an operation that is to leave it together with its other rows.
QString activityLogStatement(const Station &station, const QString &staffName, const QString &action);
