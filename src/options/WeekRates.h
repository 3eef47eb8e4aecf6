#pragma once

#include "app/Station.h"

#include <array>
#include <optional>
#include <vector>

/// Whose prices: a field's for one rate type.
struct RateKey
{
    int field = 0;
    QString rateType;
};

/// What every hour of a week costs. Days count from Monday, 0; hours are those of the clock, and 24 is 0: hours after
/// midnight belong to the day on which the business day began, as they are charged.
class WeekRates
{
public:
    static constexpr int days = 7;
    static constexpr int clockHours = 24;

    /// The price that is charged; nothing where no row gives one, and the hour costs nothing.
    [[nodiscard]] std::optional<double> price(int day, int hour) const { return at(day, hour).price; }
    /// How many rows of the table give a price for the hour.
    [[nodiscard]] int rowCount(int day, int hour) const { return at(day, hour).rows; }
    /// The prices of those rows that are not charged.
    [[nodiscard]] const std::vector<double> &others(int day, int hour) const { return at(day, hour).others; }
    /// From now on the hour has this price alone, or none.
    void setPrice(int day, int hour, std::optional<double> price);
    /// Every hour keeps the price that is charged, alone.
    void settleOverlaps();

    [[nodiscard]] bool operator==(const WeekRates &) const = default;

private:
    friend struct StoredRates;
    struct Cell
    {
        std::optional<double> price = {};
        int rows = 0;
        std::vector<double> others = {};
        bool operator==(const Cell &) const = default;
    };
    [[nodiscard]] const Cell &at(int day, int hour) const
    {
        return m_cells.at(std::size_t(day)).at(std::size_t(hour % clockHours));
    }

    std::array<std::array<Cell, clockHours>, days> m_cells;
};

/// The full English name of a day of the week, under which its prices stand.
QString rateDay(int day);

/// A row of tbl_rate: the hours from first to last, both included.
struct RateRow
{
    QString id = {};
    int day = -1; ///< -1: its text is no day of the week, and nobody is ever charged by it
    int first = 0;
    int last = 0;
    double price = 0;
    bool operator==(const RateRow &) const = default;
};

/// The prices as the table holds them.
struct StoredRates
{
    std::vector<RateRow> rows; ///< by their ids
    WeekRates week;

    /// Where several rows give a price, the one that the till finds is asked for. Throws DbError.
    static StoredRates read(Database &database, const RateKey &key);
    /// Rows by which nobody is ever charged: no day of the week, or an end before the start.
    [[nodiscard]] int uselessRows() const;
};

/// Writes a week's prices: of every day one row for each run of hours at one price, rows that are so already stay, and
/// rows by which nobody is charged are left alone. False, with nothing written, when the rows are not those of `before`
/// any more. One operation with its row in tbl_log. Throws DbError and NotDone.
bool saveRates(Station &station, const QString &administrator, const RateKey &key, const StoredRates &before,
               const WeekRates &week);

/// Which hours of the business days have no price: "Monday 24:00 to 03:00; Friday 08:00 to 09:00". Empty for none.
QString gapsInWords(const WeekRates &week, WorkingHours hours);
/// Where several rows give a price: "Monday 08:00: 20.00 is charged, 18.00 stands there too".
QString overlapsInWords(const WeekRates &week, WorkingHours hours);
