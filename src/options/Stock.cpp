#include "options/Stock.h"

#include "app/ActivityLog.h"
#include "app/FieldLengths.h"
#include "app/Operation.h"
#include "app/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostPieces = 1'000'000;

StockItem itemOf(const DbRows &row)
{
    return {row.number("i_id"), row.text("i_name"), row.text("i_type"), row.number("i_currentstock")};
}

QString signedNumber(int number)
{
    return (number < 0 ? QString() : u"+"_s) + QString::number(number);
}

QString deliveryText(const StockEntry &entry, const QString &reason)
{
    return sql(u"stock: delivery %1 %2 (%3)"_s, entry.item.name, signedNumber(entry.number), reason);
}

QString countText(const StockEntry &entry, const QString &reason)
{
    return sql(u"stock: counted %1 %2, %3 (%4)"_s, entry.item.name, entry.number,
               signedNumber(entry.number - entry.item.stock), reason);
}

/// `text` is the line that the log would hold.
template <typename Text>
QString refusalOf(const std::vector<StockEntry> &entries, const QString &reason, int fewest, Text text)
{
    if (entries.empty())
        return u"Please enter a number of pieces for at least one item."_s;
    if (reason.trimmed().isEmpty())
        return u"Please enter where the goods come from, or why they were counted."_s;
    for (const StockEntry &entry : entries) {
        if (entry.number < fewest || entry.number > mostPieces)
            return sql(u"%1: a number from %2 to %3, please."_s, entry.item.name, fewest, mostPieces);
        if (const auto over = text(entry, reason).size() - FieldLengths::activity; over > 0)
            return sql(u"The reason is too long by %1 characters: it is kept in one line with \"%2\"."_s, qint64(over),
                       entry.item.name);
    }
    return {};
}

// The row is held until the operation is over, so that no sale comes between the look and the change.
std::optional<StockItem> holdItem(Operation &operation, int id)
{
    DbRows rows = operation.query(
        sql(u"SELECT i_id, i_name, i_type, i_currentstock FROM tbl_item WHERE i_id=%1 FOR UPDATE"_s, id));
    return rows.next() ? std::optional(itemOf(rows)) : std::nullopt;
}

QString changedText(const StockItem &item)
{
    return sql(u"%1 was changed in the catalogue or is gone. Please look at the list again."_s, item.name);
}

void changeStock(Operation &operation, int id, int difference)
{
    operation.execute(sql(u"UPDATE tbl_item SET i_currentstock=i_currentstock+%1 WHERE i_id=%2"_s, difference, id));
}

// All counters and pages take the rows in one order.
std::vector<StockEntry> inOrder(std::vector<StockEntry> entries)
{
    std::sort(entries.begin(), entries.end(),
              [](const StockEntry &one, const StockEntry &other) { return one.item.id < other.item.id; });
    return entries;
}

} // namespace

std::vector<StockItem> readStock(Database &database)
{
    DbConnection connection(database);
    DbRows rows =
        connection.query(u"SELECT i_id, i_name, i_type, i_currentstock FROM tbl_item ORDER BY i_type, i_name, i_id"_s);
    std::vector<StockItem> items;
    items.reserve(std::size_t(rows.size()));
    while (rows.next())
        items.push_back(itemOf(rows));
    return items;
}

QString deliver(Station &station, const QString &administrator, const std::vector<StockEntry> &entries,
                const QString &reason)
{
    QString refusal = refusalOf(entries, reason, 1, &deliveryText);
    if (!refusal.isEmpty())
        return refusal;
    Operation operation(station, u"The delivery"_s);
    operation.run([&] {
        refusal.clear();
        for (const StockEntry &entry : inOrder(entries)) {
            const auto now = holdItem(operation, entry.item.id);
            if (!now || now->name != entry.item.name) {
                refusal = changedText(entry.item);
                return false;
            }
            changeStock(operation, entry.item.id, entry.number);
            logWithin(operation, station, administrator, deliveryText(entry, reason));
        }
        return true;
    });
    return refusal;
}

StockTake takeStock(Station &station, const QString &administrator, const std::vector<StockEntry> &entries,
                    const QString &reason, const std::vector<StockItem> &known)
{
    StockTake result{refusalOf(entries, reason, 0, &countText), {}};
    if (!result.refusal.isEmpty())
        return result;
    const auto knownStock = [&](const StockItem &item) {
        const auto told =
            std::find_if(known.cbegin(), known.cend(), [&](const StockItem &each) { return each.id == item.id; });
        return told == known.cend() ? item.stock : told->stock;
    };
    Operation operation(station, u"The stock take"_s);
    operation.run([&] {
        result = {};
        for (const StockEntry &entry : inOrder(entries)) {
            const auto now = holdItem(operation, entry.item.id);
            if (!now || now->name != entry.item.name) {
                result.refusal = changedText(entry.item);
                return false;
            }
            if (now->stock != knownStock(entry.item))
                result.moved.push_back(*now);
            changeStock(operation, entry.item.id, entry.number - entry.item.stock);
            logWithin(operation, station, administrator, countText(entry, reason));
        }
        return result.isDone();
    });
    return result;
}
