#pragma once

#include "counter/StockLog.h"

#include <optional>

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

/// The money that should be in the drawer: what was left in it, was sold and not collected.
double moneyExpected(double cashFloat, const ShiftFigures &figures);

/// What became of the goods between the end of a shift and the end of the one before it. Throws DbError.
std::vector<StockMove> stockMoves(Station &station, const EndedShift &before, const EndedShift &after);
