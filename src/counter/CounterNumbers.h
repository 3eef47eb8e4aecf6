#pragma once

#include "app/Operation.h"
#include "app/Station.h"

/// The numbers that a counter hands out for its sales and receipts: the highest one in its table and 1. Who hands one
/// out holds the lock of counterNumbersLock() until it is written.

/// The lock of a counter's transaction and receipt numbers.
QString counterNumbersLock(int counter);

/// Highest transaction number in the counter's table, 0 for an empty one.
int highestTransactionNumber(DbConnection &connection, int counter);
int highestTransactionNumber(Operation &operation, int counter);

/// Highest receipt number in the counter's table, 0 when no receipt was printed.
int highestReceiptNumber(DbConnection &connection, int counter);
int highestReceiptNumber(Operation &operation, int counter);

/// The number after the highest one. Throws ConversionError "Overflow" above 32767.
qint16 nextNumber(int highest);

/// To be called when a number was given and its operation is over: tells staff that few are left when it is 30000 or
/// more, once a day. `kind` is "transaction", "receipt" or "invoice"; the day of the last warning is kept in the
/// settings.
void warnOfHighNumber(Station &station, const QString &kind, int number);
