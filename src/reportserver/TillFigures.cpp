#include "reportserver/TillFigures.h"

#include "app/Database.h"
#include "app/SqlText.h"
#include "counter/SlotPrice.h"
#include "reportserver/Money.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The condition on a column that holds moments of the clock.
QString within(const QString &column, const ReportPeriod &period, WorkingHours hours)
{
    return sql(u"%1 >= '%2' AND %1 < '%3'"_s, column, tillDayBegins(period.first, hours),
               tillDayBegins(period.last.addDays(1), hours));
}

// The program makes a further counter's tables at its first start there.
bool hasShifts(DbConnection &connection, int counter)
{
    return connection.query(sql(u"SHOW TABLES LIKE '%1'"_s, counterTable(u"tbl_shift"_s, counter))).next();
}

} // namespace

Takings TillFigures::sum() const
{
    Takings all;
    for (const auto &[day, takings] : byDay)
        all += takings;
    return all;
}

std::vector<int> readCounters(DbConnection &connection)
{
    const QString base = u"tbl_counter"_s;
    std::vector<int> counters;
    DbRows tables = connection.query(u"SHOW TABLES LIKE 'tbl_counter%'"_s);
    while (tables.next()) {
        const QString name = tables.text(0U);
        const int number = name.mid(base.size()).toInt();
        if (number > 0 && name == counterTable(base, number))
            counters.push_back(number);
    }
    std::sort(counters.begin(), counters.end());
    return counters;
}

TillFigures readTill(DbConnection &connection, int counter, const ReportPeriod &period, WorkingHours hours)
{
    // A line of an hour is told by its form; its rate is empty at the normal price.
    DbRows rows = connection.query(
        sql(u"SELECT DATE(c_datetime - INTERVAL %1 HOUR) AS day, %4 AS is_hour, IF(%4, '', c_item) AS item, "
            "SUM(c_itemquantity) AS quantity, SUM(c_itemtotal) AS total FROM %2 WHERE %3 "
            "GROUP BY day, is_hour, item"_s,
            tillChangeHour(hours), counterTable(u"tbl_counter"_s, counter), within(u"c_datetime"_s, period, hours),
            isSlotLine()));
    TillFigures figures;
    while (rows.next()) {
        const qint64 total = toCents(rows.text("total"));
        const double quantity = rows.amount("quantity");
        Takings &takings = figures.byDay[rows.text("day")];
        if (rows.number("is_hour") != 0) {
            takings.hours += total;
            figures.hoursSold += quantity;
            continue;
        }
        takings.goods += total;
        SoldGoods &goods = figures.goods[rows.text("item")];
        goods.quantity += quantity;
        goods.total += total;
    }
    return figures;
}

std::vector<ReportedSale> readSales(DbConnection &connection, int counter, const ReportPeriod &period,
                                    WorkingHours hours)
{
    DbRows rows = connection.query(
        sql(u"SELECT c_transaction, MIN(c_datetime) AS moment, COUNT(*) AS sold_lines, SUM(c_itemtotal) AS total, "
            "MAX(c_receipt) AS receipt, c_staffid FROM %1 WHERE %2 GROUP BY c_transaction, c_staffid "
            "ORDER BY moment, c_transaction"_s,
            counterTable(u"tbl_counter"_s, counter), within(u"c_datetime"_s, period, hours)));
    std::vector<ReportedSale> sales;
    sales.reserve(std::size_t(rows.size()));
    while (rows.next())
        sales.push_back({rows.number("c_transaction"), rows.text("moment"), rows.number("sold_lines"),
                         toCents(rows.text("total")), rows.number("receipt"), rows.text("c_staffid")});
    return sales;
}

std::vector<ShiftAccount> readShifts(DbConnection &connection, int counter, const ReportPeriod &period,
                                     WorkingHours hours)
{
    if (!hasShifts(connection, counter))
        return {};
    std::vector<EndedShift> shifts = shiftsEndedWithin(connection, counter, tillDayBegins(period.first, hours),
                                                       tillDayBegins(period.last.addDays(1), hours));
    std::vector<ShiftAccount> accounts;
    accounts.reserve(shifts.size());
    for (EndedShift &shift : shifts)
        accounts.push_back(accountOf(connection, counter, std::move(shift)));
    return accounts;
}

OpenShift readOpenShift(DbConnection &connection, int counter)
{
    const auto last = hasShifts(connection, counter) ? lastShift(connection, counter) : std::nullopt;
    const QString since = last ? last->ended : QString();
    return {since, toCents(shiftFigures(connection, counter, since, u"9999-12-31"_s).sold())};
}
