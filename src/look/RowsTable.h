#pragma once

#include <QTableView>

class QStandardItem;
class QStandardItemModel;

/// A list of rows of plain text under headings, of which one can be selected.
class RowsTable : public QTableView
{
    Q_OBJECT

public:
    RowsTable(const QString &objectName, const QString &accessibleName, const QStringList &headings,
              QWidget *parent = nullptr);

    /// Gives the row's cells; their tips say the whole text.
    QList<QStandardItem *> addRow(const QStringList &texts);
    void clearRows();

    /// Every column but the stretched one as wide as its widest cell.
    void fitColumns(int stretched);
    /// Every column as wide as its text here; the one without a text is stretched.
    void fitColumns(const QStringList &widest);
    /// Of all columns when each is as wide as its widest cell.
    [[nodiscard]] int widthOfCells() const;

private:
    QStandardItemModel *m_model;
};
