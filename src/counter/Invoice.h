#pragma once

#include "app/DayRow.h"
#include "app/Operation.h"
#include "counter/Receipt.h"

#include <optional>

/// mnu_PrintInvoice: gives the selected hours one new invoice number, the same for all counters, and states what they
/// will cost. Nothing when one of them cannot be invoiced or has changed meanwhile, which staff are told; then nothing
/// is written. Throws DbError, NotDone, and ConversionError above invoice 32767.
std::optional<Receipt> invoiceOfSelection(Station &station, const DaySelection &selection);

/// The highest invoice number in tbl_booking, 0 for none.
int GetMaxInvoiceNumber(Operation &operation);
int GetMaxInvoiceNumber(DbConnection &connection);

/// What became of the selected hours: a number, or what stood against it.
struct InvoiceNumber
{
    int number = 0;
    QString refusal = {};
};

/// Writes the next invoice number into the selected hours (b_invoice of tbl_booking) while each is still the booking
/// that the grid shows.
InvoiceNumber UpdateBookingWithInvoice(Station &station, const DaySelection &selection);

/// The invoice for the selected hours at today's prices. Tells staff of special rates and extra time.
Receipt GenerateInvoiceContent(Station &station, const DaySelection &selection, int number);
