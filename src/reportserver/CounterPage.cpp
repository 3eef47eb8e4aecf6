#include "reportserver/CounterPage.h"

#include "reportserver/Html.h"
#include "reportserver/Money.h"
#include "reportserver/TillParts.h"

using namespace Qt::StringLiterals;

namespace {

QString tiles(const PageWork &work, int counter, const TillFigures &till, const std::vector<ReportedSale> &sales)
{
    const Takings sum = till.sum();
    int receipts = 0;
    for (const ReportedSale &sale : sales)
        receipts += sale.receipt > 0 ? 1 : 0;
    const OpenShift open = readOpenShift(work.connection, counter);
    return Html::tiles(
        {{u"Taken"_s, centsText(sum.all()), u"in %1 sales"_s.arg(sales.size())},
         {u"For hours"_s, centsText(sum.hours), u"%1 hours"_s.arg(plainNumber(till.hoursSold))},
         {u"For goods"_s, centsText(sum.goods), u"%1 kinds"_s.arg(till.goods.size())},
         {u"Receipts"_s, QString::number(receipts), u"printed"_s},
         {u"Since the last shift"_s, centsText(open.sold),
          open.since.isEmpty() ? u"no shift was ended yet"_s : u"that ended at "_s + open.since.left(16)}});
}

QString byStaff(const std::vector<ReportedSale> &sales)
{
    struct Sold
    {
        int sales = 0;
        qint64 total = 0;
    };
    std::map<QString, Sold> staff;
    for (const ReportedSale &sale : sales) {
        Sold &sold = staff[sale.staff];
        ++sold.sales;
        sold.total += sale.total;
    }
    Html::Table table{{{u"Staff"_s}, {u"Sales"_s, true}, {u"Amount"_s, true}}};
    for (const auto &[name, sold] : staff)
        table.rows.push_back({name, QString::number(sold.sales), centsText(sold.total)});
    table.whenEmpty = u"Nothing was sold."_s;
    return Html::heading(u"By staff"_s) + Html::table(table);
}

QString salesList(const std::vector<ReportedSale> &sales)
{
    Html::Table table{
        {{u"Sale"_s, true}, {u"Time"_s}, {u"Staff"_s}, {u"Lines"_s, true}, {u"Receipt"_s, true}, {u"Amount"_s, true}}};
    table.isWide = true;
    for (const ReportedSale &sale : sales)
        table.rows.push_back({QString::number(sale.transaction), sale.moment.mid(11, 5), sale.staff,
                              QString::number(sale.lines), sale.receipt > 0 ? QString::number(sale.receipt) : QString(),
                              centsText(sale.total)});
    table.whenEmpty = u"Nothing was sold."_s;
    return Html::heading(u"Sales"_s) + Html::table(table);
}

} // namespace

QByteArray counterPage(const PageWork &work, int counter)
{
    const WorkingHours hours = work.settings.hours();
    const TillFigures till = readTill(work.connection, counter, work.period, hours);
    const std::vector<ReportedSale> sales = readSales(work.connection, counter, work.period, hours);
    const TillParts::ByCounter alone{{counter, till}};
    QString content = tiles(work, counter, till, sales) +
                      TillParts::shifts({{counter, readShifts(work.connection, counter, work.period, hours)}}) +
                      TillParts::takingsByDay(work, alone) + TillParts::goods(alone) + byStaff(sales);
    if (work.period.kind == ReportPeriod::Kind::Day)
        content += salesList(sales);
    return framed(work, u"Counter %1: "_s.arg(counter) + work.period.inWords(), navigation(work, counter), content);
}
