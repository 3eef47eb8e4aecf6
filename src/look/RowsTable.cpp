#include "look/RowsTable.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTextDocument>

RowsTable::RowsTable(const QString &objectName, const QString &accessibleName, const QStringList &headings,
                     QWidget *parent)
    : QTableView(parent), m_model(new QStandardItemModel(0, int(headings.size()), this))
{
    setObjectName(objectName);
    setAccessibleName(accessibleName);
    m_model->setHorizontalHeaderLabels(headings);
    setModel(m_model);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QList<QStandardItem *> RowsTable::addRow(const QStringList &texts)
{
    QList<QStandardItem *> cells;
    for (const QString &text : texts) {
        auto *cell = new QStandardItem(text);
        cell->setEditable(false);
        cell->setToolTip(text.isEmpty() ? QString() : Qt::convertFromPlainText(text));
        cells << cell;
    }
    m_model->appendRow(cells);
    return cells;
}

void RowsTable::clearRows()
{
    m_model->setRowCount(0);
}

void RowsTable::fitColumns(int stretched)
{
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(stretched, QHeaderView::Stretch);
}

void RowsTable::fitColumns(const QStringList &widest)
{
    constexpr int roundText = 24;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        if (widest.at(column).isEmpty())
            horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
        else
            horizontalHeader()->resizeSection(column, fontMetrics().horizontalAdvance(widest.at(column)) + roundText);
    }
}

int RowsTable::widthOfCells() const
{
    int width = 0;
    for (int column = 0; column < m_model->columnCount(); ++column)
        width += sizeHintForColumn(column);
    return width;
}
