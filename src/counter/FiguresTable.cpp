#include "counter/FiguresTable.h"

#include "app/Formats.h"
#include "app/SqlText.h"

#include <QStandardItem>

#include <cmath>

using namespace Qt::StringLiterals;

QString differenceWords(double counted, double expected)
{
    constexpr double halfACent = 0.005;
    const double difference = counted - expected;
    const QString words = std::abs(difference) < halfACent ? u"nothing is missing"_s
                          : difference < 0                 ? moneyText(-difference) + u" short"_s
                                                           : moneyText(difference) + u" too much"_s;
    return sql(u"%1 counted, %2 should be in the drawer: %3"_s, moneyText(counted), moneyText(expected), words);
}

FiguresTable::FiguresTable(const QString &objectName, QWidget *parent)
    : RowsTable(objectName, u"Figures of the shift"_s, {u"This shift"_s, u"Number"_s, u"Amount"_s}, parent)
{
    fitColumns({QString(), u"000000.00"_s, u"000000.00"_s});
    for (int column = 1; column < 3; ++column)
        model()->setHeaderData(column, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter), Qt::TextAlignmentRole);
    setShowGrid(false);
}

void FiguresTable::addFigure(const QString &words, const QString &count, const QString &amount, bool isSum)
{
    const auto cells = addRow({words, count, amount});
    for (int column = 1; column < 3; ++column)
        cells[column]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont font = this->font();
    font.setBold(isSum);
    for (QStandardItem *cell : cells)
        cell->setFont(font);
}

void FiguresTable::showFigures(const ShiftFigures &figures, double cashFloat)
{
    clearRows();
    model()->setHeaderData(0, Qt::Horizontal,
                           figures.from.isEmpty()
                               ? u"From the beginning"_s
                               : sql(u"From %1 to %2"_s, figures.from.left(16), figures.to.left(16)));
    addFigure(u"Sales"_s, QString::number(figures.transactions), moneyText(figures.sold()), true);
    addFigure(u"   of booked hours"_s, plainNumber(figures.hours), moneyText(figures.hoursTotal));
    addFigure(u"   of goods"_s, plainNumber(figures.pieces), moneyText(figures.goodsTotal));
    addFigure(u"Float of the shift before"_s, {}, moneyText(cashFloat));
    for (const ShiftFigures::Collection &collection : figures.collections)
        addFigure(sql(u"Collected at %1, while %2 served"_s, collection.when.mid(11, 5), collection.staff), {},
                  moneyText(-collection.amount));
    addFigure(u"Should be in the drawer"_s, {}, moneyText(moneyExpected(cashFloat, figures)), true);
    addFigure(u"Drawer opened without a sale"_s, QString::number(figures.noSales), {});
    for (const QString &handOver : figures.handOvers)
        addFigure(handOver, {}, {});
}
