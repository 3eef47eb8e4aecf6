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
                              centsText(sum.hours),
                              centsText(sum.goods),
                              centsText(sum.all())});
    }
    const Takings all = sumOf(till);
    table.sums = {u"All counters"_s, centsText(all.hours), centsText(all.goods), centsText(all.all())};
    table.whenEmpty = u"There is no counter yet."_s;
    return Html::table(table);
}

// Every day of the period, also those on which nothing was sold.
std::vector<QString> daysOf(const ReportPeriod &period)
{
    std::vector<QString> days;
    days.reserve(std::size_t(period.days()));
    for (QDate day = period.first; day <= period.last; day = day.addDays(1))
        days.push_back(sqlDate(day));
    return days;
}

Takings takingsOn(const TillFigures &figures, const QString &day)
{
    const auto found = figures.byDay.find(day);
    return found == figures.byDay.end() ? Takings() : found->second;
}

/// With a column for each counter when there are several.
Html::Table tableByDay(const ByCounter &till)
{
    Html::Table table{{{u"Day"_s}}};
    if (till.size() > 1)
        for (const auto &[counter, figures] : till)
            table.columns.push_back({counterName(counter), true});
    table.columns.insert(table.columns.end(),
                         {{u"Hours"_s, true}, {u"Goods"_s, true}, {u"Together"_s, true}, {QString()}});
    table.isWide = true;
    return table;
}

std::vector<Html::Cell> rowByDay(const Html::Cell &first, const std::vector<qint64> &byCounter, const Takings &takings)
{
    std::vector<Html::Cell> row{first};
    if (byCounter.size() > 1)
        for (const qint64 amount : byCounter)
            row.emplace_back(centsText(amount));
    for (const qint64 amount : {takings.hours, takings.goods, takings.all()})
        row.emplace_back(centsText(amount));
    return row;
}

QString dayPath(const ByCounter &till, QDate day)
{
    return till.size() == 1 ? counterPath(till.begin()->first, ReportPeriod::Kind::Day, day)
                            : bookingPath(ReportPeriod::Kind::Day, day);
}

QString byDay(const PageWork &work, const ByCounter &till)
{
    Html::Table table = tableByDay(till);
    std::vector<Takings> sums;
    for (const QString &day : daysOf(work.period)) {
        Takings all;
        std::vector<qint64> byCounter;
        for (const auto &[counter, figures] : till) {
            const Takings takings = takingsOn(figures, day);
            byCounter.push_back(takings.all());
            all += takings;
        }
        const QDate date = QDate::fromString(day, Qt::ISODate);
        sums.push_back(all);
        table.rows.push_back(rowByDay({weekdayName(date).left(3) + u' ' + day, dayPath(till, date)}, byCounter, all));
    }
    qint64 most = 1;
    for (const Takings &sum : sums)
        most = std::max(most, sum.all());
    for (std::size_t i = 0; i < sums.size(); ++i)
        table.rows[i].push_back(Html::Cell::bar(double(sums[i].all()) / double(most)));
    std::vector<qint64> byCounter;
    byCounter.reserve(till.size());
    for (const auto &[counter, figures] : till)
        byCounter.push_back(figures.sum().all());
    table.sums = rowByDay(u"All days"_s, byCounter, sumOf(till));
    table.sums.emplace_back();
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
    return Html::heading(u"Takings"_s) + byCounter(work, till) + takingsByDay(work, till);
}

QString takingsByDay(const PageWork &work, const ByCounter &till)
{
    if (work.period.kind == ReportPeriod::Kind::Day)
        return {};
    return Html::heading(u"Takings by day"_s) + byDay(work, till);
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
        table.rows.push_back({name, plainNumber(goods.quantity), centsText(goods.total)});
        all += goods.total;
    }
    table.sums = {u"All goods"_s, {}, centsText(all)};
    table.whenEmpty = u"No goods were sold."_s;
    return Html::heading(u"Goods sold"_s) + Html::table(table);
}

QString shifts(const std::map<int, std::vector<ShiftAccount>> &shifts)
{
    Html::Table table{{{u"Counter"_s, true},
                       {u"Shift"_s},
                       {u"Ended"_s},
                       {u"Staff"_s},
                       {u"Float before"_s, true},
                       {u"Sold"_s, true},
                       {u"Collected"_s, true},
                       {u"Should be in the drawer"_s, true},
                       {u"Counted"_s, true},
                       {u"Difference"_s, true},
                       {u"Float left"_s, true}}};
    table.isWide = true;
    for (const auto &[counter, accounts] : shifts)
        for (const ShiftAccount &account : accounts) {
            std::vector<Html::Cell> row{QString::number(counter), account.shift.name, account.shift.ended.left(16),
                                        account.shift.staff};
            for (const double amount :
                 {account.floatBefore, account.figures.sold(), account.figures.collected(), account.expected(),
                  account.shift.money, account.difference(), account.shift.cashFloat})
                row.emplace_back(centsText(toCents(amount)));
            table.rows.push_back(std::move(row));
        }
    table.whenEmpty = u"No shift was ended."_s;
    return Html::heading(u"Ended shifts"_s) + Html::table(table);
}

} // namespace TillParts
