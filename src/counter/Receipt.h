#pragma once

#include <QString>

#include <vector>

/// One line of a receipt, as it is printed.
struct ReceiptLine
{
    QString item; ///< the line's number, from 1
    QString description;
    QString unitPrice; ///< "12.00"
    QString quantity;  ///< "1", "1.5"
    QString price;     ///< "18.00"
};

/// What stands on a receipt or an invoice, in the words in which it is shown and printed.
struct Receipt
{
    QString title = {};  ///< "OFFICIAL RECEIPT", "INVOICE", "SHIFT SLIP" …
    QString logo = {};   ///< picture file of the program's folder, empty for none
    QString info = {};   ///< the centre's address, each line followed by "\r\n"
    QString info2 = {};  ///< how to reach it, the same
    QString issued = {}; ///< "Issued By: anna"
    QString time = {};   ///< "Time: 14:59:59"
    QString date = {};   ///< "Date: 14/11/2026"
    QString number = {}; ///< "NO A 0007", "Counter 1"
    std::vector<ReceiptLine> lines = {};
    QString amount = {}; ///< "$ 12.00"
};

/// How staff call such a paper: "Receipt", "Invoice", "Shift slip".
inline QString kindOf(const Receipt &receipt)
{
    if (receipt.title == QStringLiteral("OFFICIAL RECEIPT"))
        return QStringLiteral("Receipt");
    return receipt.title.left(1) + receipt.title.mid(1).toLower();
}
