#include "counter/ReceiptNumbers.h"

#include "app/SqlText.h"

using namespace Qt::StringLiterals;

int setReceiptOfTransaction(Operation &operation, int counter, int transaction)
{
    const int receipt = nextNumber(highestReceiptNumber(operation, counter));
    const QString table = counterTable(u"tbl_counter"_s, counter);
    operation.execute(sql(u"UPDATE %1 SET c_receipt=%2 WHERE c_transaction=%3"_s, table, receipt, transaction));
    operation.proveBy(sql(u"SELECT c_id FROM %1 WHERE c_transaction=%3 AND c_receipt=%2 LOCK IN SHARE MODE"_s, table,
                          receipt, transaction));
    return receipt;
}

double receiptTotal(DbConnection &connection, int counter, int receipt)
{
    DbRows rows = connection.query(
        sql(u"SELECT * FROM %1 WHERE c_receipt='%2'"_s, counterTable(u"tbl_counter"_s, counter), receipt));
    double total = 0;
    while (rows.next())
        total += rows.amount("c_itemtotal");
    return total;
}
