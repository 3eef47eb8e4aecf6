#include "options/WeekRates.h"

#include "app/ActivityLog.h"
#include "app/FieldLengths.h"
#include "app/Operation.h"
#include "app/RateType.h"
#include "app/SqlText.h"
#include "booking/Rates.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestFieldName = 80;

QString readStatement(const RateKey &key, const QString &lock)
{
    QString days;
    for (int day = 0; day < WeekRates::days; ++day)
        days += sql(u"WHEN r_day LIKE '%1' THEN %2 "_s, rateDay(day), day);
    return sql(u"SELECT r_id, CASE %1ELSE -1 END AS day, r_timestart, r_timestop, r_rate FROM tbl_rate WHERE "
               "r_field=%2 AND r_special='%3' ORDER BY r_id%4"_s,
               days, key.field, quoted(key.rateType), lock);
}

std::vector<RateRow> rowsOf(DbRows found)
{
    std::vector<RateRow> rows;
    rows.reserve(std::size_t(found.size()));
    while (found.next())
        rows.push_back({found.text("r_id"), found.number("day"), found.number("r_timestart"),
                        found.number("r_timestop"), found.amount("r_rate")});
    return rows;
}

// A day's runs of hours at one price.
void addRuns(std::vector<RateRow> &runs, const WeekRates &week, int day)
{
    for (int hour = 0; hour < WeekRates::clockHours; ++hour) {
        const auto price = week.price(day, hour);
        if (!price)
            continue;
        if (hour > 0 && week.price(day, hour - 1) == price)
            runs.back().last = hour;
        else
            runs.push_back({{}, day, hour, hour, *price});
    }
}

bool isUseless(const RateRow &row)
{
    return row.day < 0 || row.first > row.last || row.last < 0 || row.first >= WeekRates::clockHours;
}

/// Which rows have to be written for a week.
struct Changes
{
    std::vector<RateRow> wanted;   ///< that do not stand yet
    std::vector<RateRow> leftOver; ///< that stand and are not wanted

    Changes(const std::vector<RateRow> &standing, const WeekRates &week)
    {
        for (int day = 0; day < WeekRates::days; ++day)
            addRuns(wanted, week, day);
        leftOver.reserve(standing.size());
        for (const RateRow &row : standing) {
            if (isUseless(row))
                continue;
            const auto same = std::find_if(wanted.begin(), wanted.end(), [&](const RateRow &run) {
                return run == RateRow{{}, row.day, row.first, row.last, row.price};
            });
            if (same == wanted.end())
                leftOver.push_back(row);
            else
                wanted.erase(same);
        }
    }

    void write(Operation &operation, const RateKey &key) const
    {
        for (std::size_t i = 0; i < std::max(wanted.size(), leftOver.size()); ++i) {
            if (i >= wanted.size())
                operation.execute(u"DELETE FROM tbl_rate WHERE r_id="_s + leftOver[i].id);
            else if (i < leftOver.size())
                operation.execute(sql(u"UPDATE tbl_rate SET %1 WHERE r_id=%2"_s, values(wanted[i]), leftOver[i].id));
            else
                operation.execute(sql(u"INSERT INTO tbl_rate SET r_field=%1, r_special='%2', %3"_s, key.field,
                                      quoted(key.rateType), values(wanted[i])));
        }
    }

private:
    static QString values(const RateRow &row)
    {
        return sql(u"r_day='%1', r_timestart=%2, r_timestop=%3, r_rate=%4"_s, rateDay(row.day), row.first, row.last,
                   plainNumber(row.price));
    }
};

QString priceText(std::optional<double> price)
{
    return price ? formatNumber(*price, u"##0.00"_s) : u"none"_s;
}

QString hourText(int hour)
{
    return formatTwoDigits(hour) + u":00"_s;
}

/// "rates: Court 1, member rate: 2 hours changed, the first Monday 08:00 from 18.00 to 20.00"
QString logText(const Station &station, const RateKey &key, const WeekRates &before, const WeekRates &week)
{
    int changed = 0;
    QString first;
    for (int day = 0; day < WeekRates::days; ++day) {
        for (int hour = 0; hour < WeekRates::clockHours; ++hour) {
            if (before.price(day, hour) == week.price(day, hour) || ++changed > 1)
                continue;
            first = sql(u", the first %1 %2 from %3 to %4"_s, rateDay(day), hourText(hour),
                        priceText(before.price(day, hour)), priceText(week.price(day, hour)));
        }
    }
    return sql(u"rates: %1, %2: %3 hours changed%4"_s, station.settings.fieldName(key.field).left(longestFieldName),
               RateType::inWords(key.rateType), changed, first);
}

/// Hours of one day that follow each other and are told alike.
struct Stretch
{
    int first;
    int last;
    QString words;
};

/// The stretches of all days in words; `told` gives what is told of an hour, empty for nothing.
template <typename Told>
QString stretchesInWords(WorkingHours hours, Told told)
{
    QStringList lines;
    for (int day = 0; day < WeekRates::days; ++day) {
        std::vector<Stretch> stretches;
        bool follows = false;
        for (const int hour : hoursOfDay(hours)) {
            const std::optional<QString> words = told(day, hour);
            if (words && follows && stretches.back().words == *words)
                stretches.back().last = hour;
            else if (words)
                stretches.push_back({hour, hour, *words});
            follows = words.has_value();
        }
        for (const Stretch &stretch : stretches)
            lines << sql(u"%1 %2 to %3%4"_s, rateDay(day), hourText(stretch.first),
                         hourRangeText(stretch.last).right(5), stretch.words);
    }
    return lines.join(u"; "_s);
}

} // namespace

void WeekRates::setPrice(int day, int hour, std::optional<double> price)
{
    m_cells.at(std::size_t(day)).at(std::size_t(hour % clockHours)) = {price, price ? 1 : 0, {}};
}

void WeekRates::settleOverlaps()
{
    for (auto &day : m_cells)
        for (Cell &cell : day)
            cell = {cell.price, cell.price ? 1 : 0, {}};
}

QString rateDay(int day)
{
    static const QDate monday(2024, 1, 1);
    return weekdayName(monday.addDays(day));
}

StoredRates StoredRates::read(Database &database, const RateKey &key)
{
    StoredRates stored;
    stored.rows = rowsOf(DbConnection(database).query(readStatement(key, {})));
    for (const RateRow &row : stored.rows) {
        if (isUseless(row))
            continue;
        for (int hour = std::max(row.first, 0); hour <= std::min(row.last, WeekRates::clockHours - 1); ++hour) {
            WeekRates::Cell &cell = stored.week.m_cells.at(std::size_t(row.day)).at(std::size_t(hour));
            if (++cell.rows > 1)
                cell.others.push_back(row.price);
            else
                cell.price = row.price;
        }
    }
    for (int day = 0; day < WeekRates::days; ++day) {
        for (int hour = 0; hour < WeekRates::clockHours; ++hour) {
            WeekRates::Cell &cell = stored.week.m_cells.at(std::size_t(day)).at(std::size_t(hour));
            const bool differs = std::any_of(cell.others.cbegin(), cell.others.cend(),
                                             [&](double other) { return other != cell.price; });
            if (!differs)
                continue;
            const double charged = CalcFieldRate(database, qint16(key.field), qint16(hour), rateDay(day), key.rateType);
            if (const auto found = std::find(cell.others.begin(), cell.others.end(), charged);
                charged != cell.price && found != cell.others.end())
                std::swap(*found, *cell.price);
        }
    }
    return stored;
}

int StoredRates::uselessRows() const
{
    return int(std::count_if(rows.cbegin(), rows.cend(), &isUseless));
}

bool saveRates(Station &station, const QString &administrator, const RateKey &key, const StoredRates &before,
               const WeekRates &week)
{
    Operation operation(station, u"The rates of "_s + station.settings.fieldName(key.field));
    return operation.run([&] {
        const std::vector<RateRow> standing = rowsOf(operation.query(readStatement(key, u" FOR UPDATE"_s)));
        if (standing != before.rows)
            return false;
        Changes(standing, week).write(operation, key);
        logWithin(operation, station, administrator, logText(station, key, before.week, week));
        return true;
    });
}

QString gapsInWords(const WeekRates &week, WorkingHours hours)
{
    return stretchesInWords(
        hours, [&](int day, int hour) { return week.price(day, hour) ? std::nullopt : std::optional(QString()); });
}

QString overlapsInWords(const WeekRates &week, WorkingHours hours)
{
    return stretchesInWords(hours, [&](int day, int hour) -> std::optional<QString> {
        if (week.rowCount(day, hour) < 2)
            return std::nullopt;
        QStringList others;
        for (const double other : week.others(day, hour))
            others << priceText(other);
        return sql(u": %1 is charged, %2 stands there too"_s, priceText(week.price(day, hour)), others.join(u", "_s));
    });
}
