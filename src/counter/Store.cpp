#include "counter/Store.h"

#include "app/Database.h"
#include "app/Formats.h"

using namespace Qt::StringLiterals;

std::vector<StoreItem> readStore(Database &database)
{
    DbConnection connection(database);
    DbRows rows = connection.query(u"SELECT * from tbl_item ORDER BY i_type ASC;"_s);
    std::vector<StoreItem> items;
    items.reserve(std::size_t(rows.size()));
    while (rows.next())
        items.push_back({rows.text("i_name"), formatNumber(rows.amount("i_price"), u"##0.00"_s), rows.text("i_key"),
                         rows.text("i_type"), rows.number("i_currentstock")});
    return items;
}
