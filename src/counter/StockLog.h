#pragma once

#include "app/DbRows.h"

#include <map>
#include <vector>

/// The stock of all goods at one moment, as a shift keeps it: for each item its name, "=", its stock and "|".

/// From rows of tbl_item.
QString stockLogOf(DbRows rows);

/// Name and stock, in the text's order. What is not of that form is left out.
std::vector<std::pair<QString, double>> readStockLog(const QString &log);

/// What became of an item between two moments.
struct StockMove
{
    QString item;
    double before = 0;
    double after = 0;
    double sold = 0; ///< by all counters together

    [[nodiscard]] double gone() const { return before - after; }
    /// Went out without being sold; below 0 for what came in.
    [[nodiscard]] double unexplained() const { return gone() - sold; }
};

/// Of every item in either log, in the order of the later one; those that are gone from it stand last. A name of
/// another case is the same item, as it is to a sale. `sold` has the pieces by lower-case name.
std::vector<StockMove> stockMoves(const QString &before, const QString &after, const std::map<QString, double> &sold);
