#pragma once

#include "options/OptionsPage.h"
#include "options/Stock.h"

#include <map>

class QLabel;
class QLayout;
class QLineEdit;
class QStandardItem;
class RowsTable;

/// The stock of the catalogue's goods: what was delivered, and what was counted. Numbers of pieces are typed for any
/// number of items, and go in together with one reason.
class page_Stock : public OptionsPage
{
    Q_OBJECT

public:
    page_Stock(Station &station, const QString &administrator, QWidget *parent = nullptr);

    void load() override;
    /// Numbers were typed and not sent.
    [[nodiscard]] bool hasChanges() const override { return !m_numbers.empty(); }
    /// Asks for one of the two buttons: nothing can be saved before it is known which they are.
    bool save() override;

private:
    QLayout *makeEntry();
    void showItems();
    void showRow(int row);
    void showSelected();
    /// A number, or an empty text, for the item of a row.
    void enter(int row, const QString &text);
    void takeCell(const QStandardItem *cell);
    [[nodiscard]] int selectedRow() const;
    [[nodiscard]] std::vector<StockEntry> entries() const;
    void deliverAll();
    void takeStockOfAll();
    void finish(const QString &done);

    std::vector<StockItem> m_items;
    std::map<int, int> m_numbers; ///< pieces by item
    RowsTable *m_list;
    std::vector<QList<QStandardItem *>> m_rows;
    bool m_showing = false; ///< the list is being filled, not typed into
    QLabel *m_selected = nullptr;
    QLineEdit *m_count = nullptr;
    QLineEdit *m_reason = nullptr;
    QLabel *m_done = nullptr;
};
