#pragma once

#include "app/Operation.h"
#include "counter/CounterNumbers.h"

/// Gives all lines of a transaction the next receipt number of the counter. The operation holds the counter's lock of
/// numbers. Throws ConversionError above 32767, before anything is written.
int setReceiptOfTransaction(Operation &operation, int counter, int transaction);

/// The sum of a receipt's lines.
double receiptTotal(DbConnection &connection, int counter, int receipt);
