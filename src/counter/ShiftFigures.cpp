#include "counter/ShiftFigures.h"

#include "app/Conversions.h"
#include "app/SqlText.h"
#include "app/Station.h"
#include "counter/SlotPrice.h"

#include <numeric>

using namespace Qt::StringLiterals;

namespace {

EndedShift shiftOf(const DbRows &rows)
{
    return {rows.number("sh_id"),         rows.text("sh_datetime"),
            rows.text("sh_lastdatetime"), rows.text("sh_first_transaction"),
            rows.text("sh_shift"),        rows.text("sh_staff"),
            rows.amount("sh_float"),      rows.amount("sh_totalmoney"),
            rows.amount("sh_sales"),      rows.text("sh_stocklog")};
}

QString between(const QString &column, const QString &from, const QString &to)
{
    const QString until = sql(u"%1 <= '%2'"_s, column, to);
    return from.isEmpty() ? until : sql(u"%1 > '%2' AND %3"_s, column, quoted(from), until);
}

std::vector<EndedShift> readShifts(DbConnection &connection, int counter, const QString &condition)
{
    DbRows rows = connection.query(sql(u"SELECT * FROM %1 %2"_s, counterTable(u"tbl_shift"_s, counter), condition));
    std::vector<EndedShift> shifts;
    shifts.reserve(std::size_t(rows.size()));
    while (rows.next())
        shifts.push_back(shiftOf(rows));
    return shifts;
}

void readSales(DbConnection &connection, int counter, ShiftFigures &figures)
{
    DbRows rows = connection.query(
        sql(u"SELECT COUNT(DISTINCT c_transaction) AS transactions, SUM(IF(%1, c_itemquantity, 0)) AS hours, "
            "SUM(IF(%1, c_itemtotal, 0)) AS hoursTotal, SUM(IF(%1, 0, c_itemquantity)) AS pieces, "
            "SUM(IF(%1, 0, c_itemtotal)) AS goodsTotal FROM %2 WHERE %3"_s,
            isSlotLine(), counterTable(u"tbl_counter"_s, counter), between(u"c_datetime"_s, figures.from, figures.to)));
    if (!rows.next())
        return;
    figures.transactions = rows.number("transactions");
    figures.hours = rows.amount("hours");
    figures.hoursTotal = rows.amount("hoursTotal");
    figures.pieces = rows.amount("pieces");
    figures.goodsTotal = rows.amount("goodsTotal");
}

void readActivities(DbConnection &connection, int counter, ShiftFigures &figures)
{
    const QString collected = u"Cash Collected "_s;
    DbRows rows =
        connection.query(sql(u"SELECT * FROM tbl_log WHERE log_counter=%1 AND %2 AND (log_do LIKE 'No Sale %' OR "
                             "log_do LIKE 'Handover at %' OR log_do LIKE 'Cash Collected %') ORDER BY log_id"_s,
                             counter, between(u"log_datetime"_s, figures.from, figures.to)));
    while (rows.next()) {
        const QString what = rows.text("log_do");
        const QString when = rows.text("log_datetime");
        if (what.startsWith(collected))
            figures.collections.push_back(
                {when, rows.text("log_staffname"), leadingNumber(what.mid(collected.size()))});
        else if (what.startsWith(u"Handover"))
            figures.handOvers.push_back(when.mid(11, 5) + u"  "_s + what.left(what.indexOf(u',')));
        else
            ++figures.noSales;
    }
}

// What the shift before this one left in the drawer.
double floatBefore(DbConnection &connection, int counter, const EndedShift &shift)
{
    if (shift.lastEnded.isEmpty())
        return 0;
    DbRows rows = connection.query(sql(u"SELECT sh_float FROM %1 WHERE sh_datetime='%2' ORDER BY sh_id DESC"_s,
                                       counterTable(u"tbl_shift"_s, counter), quoted(shift.lastEnded)));
    return rows.next() ? rows.amount("sh_float") : 0;
}

} // namespace

QString shortMoment(const QString &moment)
{
    return sql(u"%1/%2 %3"_s, moment.mid(8, 2), moment.mid(5, 2), moment.mid(11, 5));
}

QString moneyText(double amount)
{
    return formatNumber(amount, u"#0.00"_s);
}

std::vector<EndedShift> endedShifts(Station &station, int days)
{
    DbConnection connection(station.database);
    return readShifts(connection, station.settings.ThisCounter,
                      sql(u"WHERE sh_datetime >= '%1' ORDER BY sh_datetime DESC, sh_id DESC"_s,
                          sqlDateTime(station.now().addDays(-days))));
}

std::vector<EndedShift> shiftsEndedWithin(DbConnection &connection, int counter, const QString &begin,
                                          const QString &end)
{
    return readShifts(
        connection, counter,
        sql(u"WHERE sh_datetime >= '%1' AND sh_datetime < '%2' ORDER BY sh_datetime, sh_id"_s, begin, end));
}

std::optional<EndedShift> lastShift(Station &station)
{
    DbConnection connection(station.database);
    return lastShift(connection, station.settings.ThisCounter);
}

std::optional<EndedShift> lastShift(DbConnection &connection, int counter)
{
    std::vector<EndedShift> shifts =
        readShifts(connection, counter, u"ORDER BY sh_datetime DESC, sh_id DESC LIMIT 1"_s);
    return shifts.empty() ? std::nullopt : std::optional(std::move(shifts.front()));
}

double ShiftFigures::collected() const
{
    return std::accumulate(collections.begin(), collections.end(), 0.0,
                           [](double sum, const Collection &collection) { return sum + collection.amount; });
}

ShiftFigures shiftFigures(Station &station, const QString &from, const QString &to)
{
    DbConnection connection(station.database);
    return shiftFigures(connection, station.settings.ThisCounter, from, to);
}

ShiftFigures shiftFigures(DbConnection &connection, int counter, const QString &from, const QString &to)
{
    ShiftFigures figures;
    figures.from = from;
    figures.to = to;
    readSales(connection, counter, figures);
    readActivities(connection, counter, figures);
    return figures;
}

double moneyExpected(double cashFloat, const ShiftFigures &figures)
{
    return roundedToCents(cashFloat + figures.sold() - figures.collected());
}

ShiftAccount accountOf(DbConnection &connection, int counter, EndedShift shift)
{
    const double cashFloat = floatBefore(connection, counter, shift);
    ShiftFigures figures = shiftFigures(connection, counter, shift.lastEnded, shift.ended);
    return {std::move(shift), cashFloat, std::move(figures)};
}

std::vector<StockMove> stockMoves(Station &station, const EndedShift &before, const EndedShift &after)
{
    std::map<QString, double> sold;
    DbConnection connection(station.database);
    for (int counter = 1; counter <= station.settings.CounterCount; ++counter) {
        DbRows rows = connection.query(
            sql(u"SELECT c_item, SUM(c_itemquantity) AS pieces FROM %1 WHERE %2 AND NOT %3 GROUP BY c_item"_s,
                counterTable(u"tbl_counter"_s, counter), between(u"c_datetime"_s, before.ended, after.ended),
                isSlotLine()));
        while (rows.next())
            sold[rows.text("c_item").toLower()] += rows.amount("pieces");
    }
    return stockMoves(before.stockLog, after.stockLog, sold);
}
