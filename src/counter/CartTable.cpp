#include "counter/CartTable.h"

#include "look/Look.h"

#include <QApplication>
#include <QHeaderView>
#include <QStandardItem>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineHeight = 44;
constexpr int noteColumn = 4;

const RefusedLine *troubleOf(std::size_t line, const std::vector<RefusedLine> &refused)
{
    const auto found = std::ranges::find(refused, line, &RefusedLine::line);
    return found == refused.end() ? nullptr : &*found;
}

} // namespace

CartTable::CartTable(QWidget *parent)
    : RowsTable(u"ListView_Cart"_s, u"Payment list"_s,
                {u"Payment list"_s, u"Price"_s, u"Quantity"_s, u"Total"_s, QString()}, parent)
{
    fitColumns({u"Field Number 16 00/00/0000 00:00"_s, u"00000.00"_s, u"Quantity"_s, u"00000.00"_s, QString()});
    verticalHeader()->setDefaultSectionSize(lineHeight);
    for (int column = 1; column < noteColumn; ++column)
        model()->setHeaderData(column, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
    setShowGrid(false);
    setAlternatingRowColors(true);
}

void CartTable::showLines(const PaymentList &list, const std::vector<RefusedLine> &refused)
{
    const std::vector<PaymentLine> &lines = list.lines();
    const int current = line();
    const bool grown = int(lines.size()) > model()->rowCount();
    clearRows();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const PaymentLine &line = lines[i];
        const RefusedLine *trouble = troubleOf(i, refused);
        const QString note = trouble ? u"⚠ "_s + trouble->why : line.hour ? line.hour->booker : QString();
        const auto cells = addRow({line.text, line.price, line.quantity, line.total, note});
        for (int column = 1; column < noteColumn; ++column)
            cells[column]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        for (QStandardItem *cell : trouble ? cells : QList<QStandardItem *>()) {
            cell->setBackground(Look::alert.background);
            cell->setForeground(Look::alert.text);
        }
    }
    // What stands against paying is seen on the selected line, too.
    QPalette colours = QApplication::palette();
    if (!refused.empty())
        colours.setColor(QPalette::Highlight, Look::alert.background);
    setPalette(colours);
    const int last = int(lines.size()) - 1;
    if (last >= 0 && !refused.empty())
        selectRow(int(refused.front().line));
    else if (last >= 0)
        selectRow(grown || current < 0 ? last : std::min(current, last));
    scrollTo(currentIndex());
}
