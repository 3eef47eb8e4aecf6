#pragma once

#include "counter/ShiftFigures.h"
#include "reportserver/ReportPeriod.h"

#include <QString>

#include <map>
#include <vector>

class DbConnection;

/// What was taken, in cents.
struct Takings
{
    qint64 hours = 0; ///< for booked hours
    qint64 goods = 0; ///< for everything else

    [[nodiscard]] qint64 all() const { return hours + goods; }
    Takings &operator+=(const Takings &other)
    {
        hours += other.hours;
        goods += other.goods;
        return *this;
    }
};

/// All pieces of one kind of goods.
struct SoldGoods
{
    double quantity = 0;
    qint64 total = 0; ///< in cents
};

/// One sale with all its lines.
struct ReportedSale
{
    int transaction = 0;
    QString moment; ///< "yyyy-mm-dd hh:mm:ss"
    int lines = 0;
    qint64 total = 0; ///< in cents
    int receipt = 0;  ///< 0: none was printed
    QString staff;
};

/// What one counter's lines of a period add up to.
struct TillFigures
{
    std::map<QString, Takings> byDay; ///< by business day "yyyy-mm-dd"; days without a sale are missing
    std::map<QString, SoldGoods> goods;
    double hoursSold = 0;

    [[nodiscard]] Takings sum() const;
};

/// The counters that have a table of lines, ascending.
std::vector<int> readCounters(DbConnection &connection);

/// All of them throw DbError.
TillFigures readTill(DbConnection &connection, int counter, const ReportPeriod &period, WorkingHours hours);
std::vector<ReportedSale> readSales(DbConnection &connection, int counter, const ReportPeriod &period,
                                    WorkingHours hours);
std::vector<ShiftAccount> readShifts(DbConnection &connection, int counter, const ReportPeriod &period,
                                     WorkingHours hours);
/// What has been sold since the counter's last shift ended, in cents, and that moment; empty before the first one.
struct OpenShift
{
    QString since;
    qint64 sold = 0;
};
OpenShift readOpenShift(DbConnection &connection, int counter);
