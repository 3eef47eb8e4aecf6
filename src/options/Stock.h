#pragma once

#include "app/Station.h"

#include <vector>

/// Goods that come in and goods that are counted (tbl_item.i_currentstock). Sales go on meanwhile, so every change is a
/// difference and no sale is lost. Each operation writes a row in tbl_log for each item: "stock: delivery Cola +24
/// (Miller's)". Throws DbError and NotDone.

struct StockItem
{
    int id = 0;
    QString name;
    QString type;
    int stock = 0;
};

/// By kind and name.
std::vector<StockItem> readStock(Database &database);

/// What came in, or what was counted, of an item.
struct StockEntry
{
    StockItem item; ///< as the person saw it
    int number = 0; ///< pieces
};

/// Adds what came in, all of it or nothing. Gives what stands against it; empty when it is done.
QString deliver(Station &station, const QString &administrator, const std::vector<StockEntry> &entries,
                const QString &reason);

/// What a stock take has come to.
struct StockTake
{
    QString refusal;              ///< what stands against it
    std::vector<StockItem> moved; ///< sold or delivered since the person saw the stock, as it is now
    [[nodiscard]] bool isDone() const { return refusal.isEmpty() && moved.empty(); }
};

/// Corrects the stock by the difference between what was counted and what the person saw. Where goods moved since,
/// nothing is written but for what `known` says that the person has been told.
StockTake takeStock(Station &station, const QString &administrator, const std::vector<StockEntry> &entries,
                    const QString &reason, const std::vector<StockItem> &known = {});
