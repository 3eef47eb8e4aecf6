#include "counter/Receipts.h"

#include "app/ActivityLog.h"
#include "app/Conversions.h"
#include "app/SqlText.h"
#include "counter/ReceiptNumbers.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestNumber = 20;

// contact1, contact2 … up to the first one missing.
QString settingLines(const QString &section, const QString &key)
{
    QString lines;
    for (int i = 1;; ++i) {
        const QString line = ReadSetting(section, key + QString::number(i), {});
        if (line.isEmpty())
            return lines;
        lines += line + u"\r\n"_s;
    }
}

QString amountText(double amount)
{
    return formatNumber(amount, u"#0.00"_s);
}

/// A transaction's receipt number, and whether it was given just now; 0 for a transaction that there is not.
struct GivenNumber
{
    int receipt = 0;
    bool isNew = false;
};

GivenNumber numberOfReceipt(Station &station, double transaction)
{
    const int counter = station.settings.ThisCounter;
    GivenNumber given;
    Operation operation(station, sql(u"The receipt of transaction %1"_s, plainNumber(transaction)),
                        {counterNumbersLock(counter)});
    operation.run([&] {
        given = {};
        DbRows rows = operation.query(sql(u"SELECT * FROM %1 where c_transaction=%2"_s,
                                          counterTable(u"tbl_counter"_s, counter), plainNumber(transaction)));
        if (!rows.next())
            return false;
        given.receipt = rows.number("c_receipt");
        if (given.receipt != 0)
            return false;
        given = {setReceiptOfTransaction(operation, counter, rows.number("c_transaction")), true};
        return true;
    });
    return given;
}

} // namespace

Receipt receiptHead(const Station &station, const QString &title, int number)
{
    const QString now = sqlDateTime(station.now());
    Receipt receipt;
    receipt.title = title;
    receipt.logo = station.settings.logoPicture;
    receipt.info = settingLines(u"Address"_s, u"address"_s);
    receipt.info2 = settingLines(u"Contact"_s, u"contact"_s);
    receipt.issued = u"Issued By: "_s + station.CurrentStaff;
    receipt.time = u"Time: "_s + now.mid(11);
    receipt.date = sql(u"Date: %1/%2/%3"_s, now.mid(8, 2), now.mid(5, 2), now.left(4));
    receipt.number =
        sql(u"NO %1 %2"_s, QString(QChar(u'@' + station.settings.ThisCounter)), formatNumber(number, u"#0000"_s));
    return receipt;
}

Receipt GenerateReceiptContent(Station &station, int receiptNumber)
{
    const int counter = station.settings.ThisCounter;
    Receipt receipt = receiptHead(station, u"OFFICIAL RECEIPT"_s, receiptNumber);
    DbConnection connection(station.database);
    receipt.amount = u"$ "_s + amountText(receiptTotal(connection, counter, receiptNumber));
    DbRows rows = connection.query(
        sql(u"SELECT * FROM %1 WHERE c_receipt ='%2'"_s, counterTable(u"tbl_counter"_s, counter), receiptNumber));
    while (rows.next())
        receipt.lines.push_back({QString::number(receipt.lines.size() + 1), rows.text("c_item"),
                                 amountText(rows.amount("c_itemprice")), rows.text("c_itemquantity"),
                                 amountText(rows.amount("c_itemtotal"))});
    return receipt;
}

std::optional<Receipt> receiptOfTransaction(Station &station, double transaction)
{
    // The server would round a fraction to the number of another sale.
    const GivenNumber given =
        transaction == std::floor(transaction) ? numberOfReceipt(station, transaction) : GivenNumber{};
    if (given.receipt == 0)
        return std::nullopt;
    if (given.isNew) {
        WriteActivityLog(station, station.CurrentStaff, u"Receipt Printed "_s + QString::number(given.receipt));
        warnOfHighNumber(station, u"receipt"_s, given.receipt);
    }
    return GenerateReceiptContent(station, given.receipt);
}

std::optional<Receipt> askForOldReceipt(Station &station)
{
    const QString answer = station.prompts.askText(u"Enter Transaction Number"_s, longestNumber, u"Print Receipt"_s);
    if (answer.isEmpty())
        return std::nullopt;
    auto receipt = receiptOfTransaction(station, leadingNumber(answer));
    if (!receipt)
        station.prompts.inform(u"No transaction by that number"_s, {}, MessageIcon::None);
    return receipt;
}
