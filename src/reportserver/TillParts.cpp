#include "reportserver/TillParts.h"

#include "app/Formats.h"
#include "reportserver/Html.h"
#include "reportserver/Money.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace TillParts {

namespace {

QString counterName(int counter)
{
    return u"Counter "_s + QString::number(counter);
}

QString byCounter(const PageWork &work, const ByCounter &till)
{
    Html::Table table{{{u"Counter"_s}, {u"Hours"_s, true}, {u"Goods"_s, true}, {u"Together"_s, true}}};
    for (const auto &[counter, figures] : till) {
        const Takings sum = figures.sum();
        table.rows.push_back({{counterName(counter), counterPath(counter, work.period.kind, work.period.first)},
                              moneyText(sum.hours),
                              moneyText(sum.goods),
                              moneyText(sum.all())});
    }
    const Takings all = sumOf(till);
    table.sums = {u"All counters"_s, moneyText(all.hours), moneyText(all.goods), moneyText(all.all())};
    table.whenEmpty = u"There is no counter yet."_s;
    return Html::table(table);
}

// By day, every day of the period, also those on which nothing was sold.
QString byDay(const PageWork &work, const ByCounter &till)
{
    std::map<QString, Takings> days;
    for (QDate day = work.period.first; day <= work.period.last; day = day.addDays(1))
        days[sqlDate(day)];
    for (const auto &[counter, figures] : till)
        for (const auto &[day, takings] : figures.byDay)
            days[day] += takings;
    qint64 most = 1;
    for (const auto &[day, takings] : days)
        most = std::max(most, takings.all());
    Html::Table table{{{u"Day"_s}, {u"Hours"_s, true}, {u"Goods"_s, true}, {u"Together"_s, true}, {}}};
    for (const auto &[day, takings] : days) {
        const QDate date = QDate::fromString(day, Qt::ISODate);
        table.rows.push_back({{weekdayName(date).left(3) + u' ' + day, bookingPath(ReportPeriod::Kind::Day, date)},
                              moneyText(takings.hours),
                              moneyText(takings.goods),
                              moneyText(takings.all()),
                              Html::Cell::bar(double(takings.all()) / double(most))});
    }
    const Takings all = sumOf(till);
    table.sums = {u"All days"_s, moneyText(all.hours), moneyText(all.goods), moneyText(all.all()), {}};
    return Html::table(table);
}

} // namespace

Takings sumOf(const ByCounter &till)
{
    Takings all;
    for (const auto &[counter, figures] : till)
        all += figures.sum();
    return all;
}

QString takings(const PageWork &work, const ByCounter &till)
{
    QString html = Html::heading(u"Takings"_s) + byCounter(work, till);
    if (work.period.kind != ReportPeriod::Kind::Day)
        html += Html::subheading(u"By day"_s) + byDay(work, till);
    return html;
}

QString goods(const ByCounter &till)
{
    std::map<QString, SoldGoods> sold;
    for (const auto &[counter, figures] : till)
        for (const auto &[name, goods] : figures.goods) {
            sold[name].quantity += goods.quantity;
            sold[name].total += goods.total;
        }
    std::vector<std::pair<QString, SoldGoods>> ordered(sold.begin(), sold.end());
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const auto &one, const auto &other) { return one.second.total > other.second.total; });
    Html::Table table{{{u"Goods"_s}, {u"Pieces"_s, true}, {u"Amount"_s, true}}};
    qint64 all = 0;
    for (const auto &[name, goods] : ordered) {
        table.rows.push_back({name, plainNumber(goods.quantity), moneyText(goods.total)});
        all += goods.total;
    }
    table.sums = {u"All goods"_s, {}, moneyText(all)};
    table.whenEmpty = u"No goods were sold."_s;
    return Html::heading(u"Goods sold"_s) + Html::table(table);
}

QString shifts(const std::vector<EndedShift> &shifts)
{
    Html::Table table{{{u"Counter"_s, true},
                       {u"Shift"_s},
                       {u"Ended"_s},
                       {u"Staff"_s},
                       {u"Counted"_s, true},
                       {u"Float"_s, true},
                       {u"Counted less float"_s, true},
                       {u"Sold in the shift"_s, true},
                       {u"Difference"_s, true}}};
    table.isWide = true;
    for (const EndedShift &shift : shifts)
        table.rows.push_back({QString::number(shift.counter), shift.name, shift.end.left(16), shift.staff,
                              moneyText(shift.counted), moneyText(shift.floatLeft), moneyText(shift.countedSales),
                              moneyText(shift.sold), moneyText(shift.countedSales - shift.sold)});
    table.whenEmpty = u"No shift was ended."_s;
    return Html::heading(u"Ended shifts"_s) + Html::table(table);
}

} // namespace TillParts
