#include "counter/Invoice.h"

#include "app/ActivityLog.h"
#include "app/SqlText.h"
#include "booking/Ground.h"
#include "booking/SlotWords.h"
#include "counter/CounterNumbers.h"
#include "counter/Receipts.h"
#include "counter/SlotPrice.h"

using namespace Qt::StringLiterals;

namespace {

QString reasonAgainst(const DayRow &row)
{
    return reasonNotToCharge(
        row, {u"You cannot print invoice for empty slot"_s,
              u"The slot is an extra time of previous slot, use the previous slot to print for an invoice"_s,
              u"Please print via master slots"_s});
}

QString changeSince(const DayRow &row, const std::optional<SlotHolder> &holder)
{
    if (!holder)
        return changedMeanwhile(u"it is free now"_s);
    if (holder->name != row.booker)
        return changedMeanwhile(holder->name);
    return holder->isPaid ? u"The slot already paid"_s : QString();
}

QStringList locksOf(const Station &station, const DaySelection &selection)
{
    QStringList locks{u"posdb invoice numbers"_s};
    for (const int index : selection.selected)
        locks += groundLocks(station, selection.slotOf(selection.row(index)));
    return locks;
}

template <typename Connection>
int highestInvoice(Connection &connection)
{
    DbRows rows = connection.query(u"SELECT MAX(b_invoice) FROM tbl_booking"_s);
    return rows.next() ? rows.number("MAX(b_invoice)") : 0;
}

} // namespace

int GetMaxInvoiceNumber(Operation &operation)
{
    return highestInvoice(operation);
}

int GetMaxInvoiceNumber(DbConnection &connection)
{
    return highestInvoice(connection);
}

InvoiceNumber UpdateBookingWithInvoice(Station &station, const DaySelection &selection)
{
    InvoiceNumber result;
    Operation operation(station, u"The invoice for "_s + taskInWords({}, station.settings, selection).trimmed(),
                        locksOf(station, selection));
    operation.run([&] {
        result = {};
        for (const int index : selection.selected) {
            const DayRow &row = selection.row(index);
            result.refusal = changeSince(row, holdSlot(operation, selection.slotOf(row)));
            if (!result.refusal.isEmpty())
                return false;
        }
        result.number = nextNumber(GetMaxInvoiceNumber(operation));
        operation.setRecordedAs(u"as invoice "_s + QString::number(result.number));
        for (const int index : selection.selected) {
            const SlotKey slot = selection.slotOf(selection.row(index));
            operation.execute(sql(u"UPDATE tbl_booking SET b_invoice=%1 WHERE b_datetime = '%2' AND b_field=%3"_s,
                                  result.number, slot.dateTimeText(), slot.field));
            operation.proveBy(sql(u"SELECT b_id FROM tbl_booking WHERE b_invoice=%1 AND b_datetime='%2' AND b_field=%3 "
                                  "LOCK IN SHARE MODE"_s,
                                  result.number, slot.dateTimeText(), slot.field));
        }
        return true;
    });
    return result;
}

Receipt GenerateInvoiceContent(Station &station, const DaySelection &selection, int number)
{
    Receipt invoice = receiptHead(station, u"INVOICE"_s, number);
    double total = 0;
    for (const int index : selection.selected) {
        const SlotKey slot = selection.slotOf(selection.row(index));
        const SlotPrice price = priceOfSlot(station, slot);
        total += price.total;
        invoice.lines.push_back({QString::number(invoice.lines.size() + 1), u' ' + slotLineText(slot),
                                 formatNumber(price.price, u"#0.00"_s), plainNumber(price.quantity),
                                 formatNumber(price.total, u"#0.00"_s)});
    }
    invoice.amount = u"$ "_s + formatNumber(total, u"#0.00"_s);
    return invoice;
}

std::optional<Receipt> invoiceOfSelection(Station &station, const DaySelection &selection)
{
    for (const int index : selection.selected) {
        if (const QString reason = reasonAgainst(selection.row(index)); !reason.isEmpty()) {
            station.prompts.refuse(reason);
            return std::nullopt;
        }
    }
    const InvoiceNumber given = UpdateBookingWithInvoice(station, selection);
    if (!given.refusal.isEmpty()) {
        station.prompts.refuse(given.refusal);
        return std::nullopt;
    }
    WriteActivityLog(station, station.CurrentStaff, u"Invoice Printed "_s + QString::number(given.number));
    warnOfHighNumber(station, u"invoice"_s, given.number);
    return GenerateInvoiceContent(station, selection, given.number);
}
