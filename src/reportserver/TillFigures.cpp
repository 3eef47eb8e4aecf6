#include "reportserver/TillFigures.h"

#include "app/Database.h"
#include "app/SqlText.h"
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

qint64 soldBetween(DbConnection &connection, int counter, const QString &begin, const QString &end)
{
    const QString from = begin.isEmpty() ? QString() : sql(u"c_datetime > '%1' AND "_s, quoted(begin));
    DbRows rows = connection.query(sql(u"SELECT SUM(c_itemtotal) AS sold FROM %1 WHERE %2c_datetime <= '%3'"_s,
                                       counterTable(u"tbl_counter"_s, counter), from, quoted(end)));
    return rows.next() ? centsOf(rows.text("sold")) : 0;
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
        sql(u"SELECT DATE(c_datetime - INTERVAL %1 HOUR) AS day, c_item REGEXP "
            "'^Field Number [0-9]+ [0-9][0-9]/[0-9][0-9]/[0-9]{4} [0-9][0-9]:[0-9][0-9]$' AS is_hour, "
            "IF(c_item REGEXP '^Field Number [0-9]+ [0-9][0-9]/[0-9][0-9]/[0-9]{4} [0-9][0-9]:[0-9][0-9]$', '', "
            "c_item) AS item, SUM(c_itemquantity) AS quantity, SUM(c_itemtotal) AS total FROM %2 WHERE %3 "
            "GROUP BY day, is_hour, item"_s,
            tillChangeHour(hours), counterTable(u"tbl_counter"_s, counter), within(u"c_datetime"_s, period, hours)));
    TillFigures figures;
    while (rows.next()) {
        const qint64 total = centsOf(rows.text("total"));
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

std::vector<Sale> readSales(DbConnection &connection, int counter, const ReportPeriod &period, WorkingHours hours)
{
    DbRows rows = connection.query(
        sql(u"SELECT c_transaction, MIN(c_datetime) AS moment, COUNT(*) AS sold_lines, SUM(c_itemtotal) AS total, "
            "MAX(c_receipt) AS receipt, c_staffid FROM %1 WHERE %2 GROUP BY c_transaction, c_staffid "
            "ORDER BY moment, c_transaction"_s,
            counterTable(u"tbl_counter"_s, counter), within(u"c_datetime"_s, period, hours)));
    std::vector<Sale> sales;
    sales.reserve(std::size_t(rows.size()));
    while (rows.next())
        sales.push_back({rows.number("c_transaction"), rows.text("moment"), rows.number("sold_lines"),
                         centsOf(rows.text("total")), rows.number("receipt"), rows.text("c_staffid")});
    return sales;
}

std::vector<EndedShift> readShifts(DbConnection &connection, int counter, const ReportPeriod &period,
                                   WorkingHours hours)
{
    if (!hasShifts(connection, counter))
        return {};
    DbRows rows = connection.query(
        sql(u"SELECT sh_datetime, sh_lastdatetime, sh_shift, sh_staff, sh_float, sh_totalmoney, sh_sales FROM %1 "
            "WHERE %2 ORDER BY sh_datetime, sh_id"_s,
            counterTable(u"tbl_shift"_s, counter), within(u"sh_datetime"_s, period, hours)));
    std::vector<EndedShift> shifts;
    shifts.reserve(std::size_t(rows.size()));
    while (rows.next())
        shifts.push_back({counter, rows.text("sh_lastdatetime"), rows.text("sh_datetime"), rows.text("sh_shift"),
                          rows.text("sh_staff"), centsOf(rows.text("sh_totalmoney")), centsOf(rows.text("sh_float")),
                          centsOf(rows.text("sh_sales"))});
    for (EndedShift &shift : shifts)
        shift.sold = soldBetween(connection, counter, shift.begin, shift.end);
    return shifts;
}

OpenShift readOpenShift(DbConnection &connection, int counter)
{
    OpenShift open;
    if (hasShifts(connection, counter)) {
        DbRows last =
            connection.query(sql(u"SELECT MAX(sh_datetime) AS since FROM %1"_s, counterTable(u"tbl_shift"_s, counter)));
        if (last.next())
            open.since = last.text("since");
    }
    open.sold = soldBetween(connection, counter, open.since, u"9999-12-31"_s);
    return open;
}
