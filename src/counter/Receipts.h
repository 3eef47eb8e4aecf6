#pragma once

#include "app/Station.h"
#include "counter/Receipt.h"

#include <optional>

/// A receipt or an invoice without its lines and amount: heading from the settings, who and when, and the number behind
/// the counter's letter.
Receipt receiptHead(const Station &station, const QString &title, int number);

/// The receipt with this number, as its lines stand in the counter's table. Throws DbError.
Receipt GenerateReceiptContent(Station &station, int receiptNumber);

/// The receipt of a transaction of this counter; nothing when there is no such transaction. The first time that it is
/// asked for it gets its number (c_receipt of its lines) and a line in the activity log; both stay. Throws DbError,
/// NotDone, and ConversionError above receipt 32767.
std::optional<Receipt> receiptOfTransaction(Station &station, double transaction);

/// btn_PrintOldReceipt: the receipt of a transaction that staff are asked for; nothing when they name none, or one that
/// there is not, which they are told. As receiptOfTransaction.
std::optional<Receipt> askForOldReceipt(Station &station);
