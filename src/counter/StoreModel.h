#pragma once

#include "counter/Store.h"

#include <QAbstractTableModel>

#include <vector>

/// The items of the catalogue as the counter's list shows them, those that the find box lets through.
class StoreModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Price, Key, Stock, ColumnCount };
    /// The type, in the rows that begin a group of items; as QString.
    static constexpr int HeadingRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setItems(std::vector<StoreItem> items);
    /// Only items whose name or type holds this text, in whatever letters; all for an empty one.
    void setFilter(const QString &text);

    [[nodiscard]] const StoreItem &item(int row) const { return m_items[m_shown[std::size_t(row)]]; }
    /// Among all items, whatever the find box says; nullptr for none.
    [[nodiscard]] const StoreItem *itemOfKey(const QString &key) const;
    /// The rows that begin a group.
    [[nodiscard]] std::vector<int> headingRows() const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] bool beginsGroup(int row) const;
    [[nodiscard]] static QString text(const StoreItem &item, int column);
    [[nodiscard]] QString spokenText(int row) const;
    void choose();

    std::vector<StoreItem> m_items;
    std::vector<std::size_t> m_shown; ///< indexes into m_items
    QString m_filter;
};
