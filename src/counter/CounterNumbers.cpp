#include "counter/CounterNumbers.h"

#include "app/Conversions.h"
#include "app/SqlText.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 lastNumber = std::numeric_limits<qint16>::max();
constexpr int firstHighNumber = 30'000;

template <typename Connection>
int highestTransaction(Connection &connection, int counter)
{
    DbRows rows = connection.query(u"SELECT MAX(c_transaction) FROM "_s + counterTable(u"tbl_counter"_s, counter));
    return rows.next() ? rows.number("MAX(c_transaction)") : 0;
}

template <typename Connection>
int highestReceipt(Connection &connection, int counter)
{
    DbRows rows = connection.query(u"SELECT MAX(c_receipt) FROM "_s + counterTable(u"tbl_counter"_s, counter));
    return rows.next() ? rows.number("MAX(c_receipt)") : 0;
}

} // namespace

QString counterNumbersLock(int counter)
{
    return sql(u"posdb counter %1 numbers"_s, counter);
}

int highestTransactionNumber(DbConnection &connection, int counter)
{
    return highestTransaction(connection, counter);
}

int highestTransactionNumber(Operation &operation, int counter)
{
    return highestTransaction(operation, counter);
}

int highestReceiptNumber(DbConnection &connection, int counter)
{
    return highestReceipt(connection, counter);
}

int highestReceiptNumber(Operation &operation, int counter)
{
    return highestReceipt(operation, counter);
}

qint16 nextNumber(int highest)
{
    if (highest >= lastNumber)
        throw ConversionError("Overflow");
    return static_cast<qint16>(highest + 1);
}

void warnOfHighNumber(Station &station, const QString &kind, int number)
{
    if (number < firstHighNumber)
        return;
    const QString today = sqlDate(station.now().date());
    const QString key = u"warned_"_s + kind;
    if (ReadSetting(u"Till"_s, key, {}) == today)
        return;
    WriteSetting(u"Till"_s, key, today);
    station.prompts.inform(sql(u"The %1 numbers are running out: %2 was given now, and %3 is the last one that there "
                               "can be. Please tell whoever looks after the database."_s,
                               kind, number, int(lastNumber)));
}
