#pragma once

#include <QString>

#include <vector>

class Database;

/// An item of the catalogue as the counter sells it.
struct StoreItem
{
    QString name;
    QString price; ///< of one piece, "##0.00"
    QString key;   ///< "F1", or the number that a scanner reads
    QString type;
    int stock = 0;

    /// True for the item whose price is typed with each sale.
    [[nodiscard]] bool isMisc() const { return name == QStringLiteral("Misc"); }
};

/// All items (tbl_item), grouped by type. Throws DbError.
std::vector<StoreItem> readStore(Database &database);
