#include "counter/StockLog.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

QString stockLogOf(DbRows rows)
{
    QString log;
    while (rows.next())
        log += rows.text("i_name") + u'=' + rows.text("i_currentstock") + u'|';
    return log;
}

std::vector<std::pair<QString, double>> readStockLog(const QString &log)
{
    // A name may itself have both signs in it.
    static const QRegularExpression entry(u"(.*?)=(-?[0-9.]*)\\|"_s, QRegularExpression::DotMatchesEverythingOption);
    std::vector<std::pair<QString, double>> stocks;
    for (auto found = entry.globalMatch(log); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        stocks.emplace_back(match.captured(1), match.captured(2).toDouble());
    }
    return stocks;
}

std::vector<StockMove> stockMoves(const QString &before, const QString &after, const std::map<QString, double> &sold)
{
    std::vector<StockMove> moves;
    const auto moveOf = [&](const QString &item) -> StockMove & {
        const auto found = std::ranges::find_if(
            moves, [&](const StockMove &move) { return move.item.compare(item, Qt::CaseInsensitive) == 0; });
        if (found != moves.end())
            return *found;
        const auto pieces = sold.find(item.toLower());
        moves.push_back({item, 0, 0, pieces == sold.end() ? 0 : pieces->second});
        return moves.back();
    };
    for (const auto &[item, stock] : readStockLog(after))
        moveOf(item).after = stock;
    for (const auto &[item, stock] : readStockLog(before))
        moveOf(item).before = stock;
    return moves;
}
