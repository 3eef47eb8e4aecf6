#pragma once

#include "counter/StockLog.h"

#include <optional>

class DbConnection;
struct Station;

/// A row of the counter's tbl_shift: a shift that was ended. Moments are "yyyy-mm-dd hh:mm:ss".
struct EndedShift
{
    int id = 0;
    QString ended = {};
    QString lastEnded = {};        ///< the end of the shift before, empty for the first one
    QString firstTransaction = {}; ///< its end when nothing was sold
    QString name = {};             ///< "morning" or "evening"
    QString staff = {};
    double cashFloat = 0; ///< left in the drawer for the next shift
    double money = 0;     ///< counted in the drawer
    double sales = 0;     ///< money less float
    QString stockLog = {};
};

/// "2026-11-14 22:05:09" as "14/11 22:05".
QString shortMoment(const QString &moment);
/// 12.5 as "12.50".
QString moneyText(double amount);

/// Of this counter, the latest first; those that ended in the last `days` days. Throws DbError.
std::vector<EndedShift> endedShifts(Station &station, int days);
/// The shift that ended last, nothing for a new counter. Throws DbError.
std::optional<EndedShift> lastShift(Station &station);
std::optional<EndedShift> lastShift(DbConnection &connection, int counter);
/// Of any counter, the earliest first; those that ended from `begin` on and before `end`. Throws DbError.
std::vector<EndedShift> shiftsEndedWithin(DbConnection &connection, int counter, const QString &begin,
                                          const QString &end);

/// What happened at this counter after one moment and up to another, by its tbl_counter and tbl_log.
struct ShiftFigures
{
    struct Collection
    {
        QString when;
        QString staff;
        double amount = 0;
    };

    QString from; ///< empty: from the beginning
    QString to;
    int transactions = 0;
    double hours = 0; ///< sold, quarters as decimals
    double hoursTotal = 0;
    double pieces = 0; ///< of goods
    double goodsTotal = 0;
    int noSales = 0;                ///< openings of the drawer without a sale
    std::vector<QString> handOvers; ///< "15:02 Handover at 250"
    std::vector<Collection> collections;

    [[nodiscard]] double sold() const { return hoursTotal + goodsTotal; }
    [[nodiscard]] double collected() const;
};
/// Throws DbError.
ShiftFigures shiftFigures(Station &station, const QString &from, const QString &to);
ShiftFigures shiftFigures(DbConnection &connection, int counter, const QString &from, const QString &to);

/// The money that should be in the drawer: what was left in it, was sold and not collected.
double moneyExpected(double cashFloat, const ShiftFigures &figures);

/// An ended shift and what its drawer should have held.
struct ShiftAccount
{
    EndedShift shift;
    double floatBefore = 0; ///< what the shift before left in the drawer
    ShiftFigures figures;

    [[nodiscard]] double expected() const { return moneyExpected(floatBefore, figures); }
    /// Below zero when money is missing.
    [[nodiscard]] double difference() const { return shift.money - expected(); }
};
/// Throws DbError.
ShiftAccount accountOf(DbConnection &connection, int counter, EndedShift shift);

/// What became of the goods between the end of a shift and the end of the one before it. Throws DbError.
std::vector<StockMove> stockMoves(Station &station, const EndedShift &before, const EndedShift &after);
