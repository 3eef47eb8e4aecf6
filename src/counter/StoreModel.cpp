#include "counter/StoreModel.h"

#include "look/Look.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void StoreModel::setItems(std::vector<StoreItem> items)
{
    beginResetModel();
    m_items = std::move(items);
    choose();
    endResetModel();
}

void StoreModel::setFilter(const QString &text)
{
    if (text == m_filter)
        return;
    beginResetModel();
    m_filter = text;
    choose();
    endResetModel();
}

void StoreModel::choose()
{
    m_shown.clear();
    for (std::size_t i = 0; i < m_items.size(); ++i)
        if (m_items[i].name.contains(m_filter, Qt::CaseInsensitive) ||
            m_items[i].type.contains(m_filter, Qt::CaseInsensitive))
            m_shown.push_back(i);
}

const StoreItem *StoreModel::itemOfKey(const QString &key) const
{
    if (key.isEmpty())
        return nullptr;
    const auto found = std::ranges::find_if(
        m_items, [&](const StoreItem &item) { return !item.key.compare(key, Qt::CaseInsensitive); });
    return found == m_items.end() ? nullptr : &*found;
}

std::vector<int> StoreModel::headingRows() const
{
    std::vector<int> rows;
    for (int row = 0; row < rowCount(); ++row)
        if (beginsGroup(row))
            rows.push_back(row);
    return rows;
}

bool StoreModel::beginsGroup(int row) const
{
    return row == 0 || item(row).type != item(row - 1).type;
}

int StoreModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_shown.size());
}

int StoreModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString StoreModel::text(const StoreItem &item, int column)
{
    switch (column) {
    case Name:
        return item.name;
    case Price:
        return item.price;
    case Key:
        return item.key;
    default:
        return item.stock > 0 ? QString::number(item.stock) : u"sold out"_s;
    }
}

QString StoreModel::spokenText(int row) const
{
    const StoreItem &shown = item(row);
    return shown.type + u": "_s + shown.name + u", "_s + shown.price +
           (shown.key.isEmpty() ? QString() : u", key "_s + shown.key) +
           (shown.stock > 0 ? QString() : u", sold out"_s);
}

QVariant StoreModel::data(const QModelIndex &index, int role) const
{
    const StoreItem &shown = item(index.row());
    const bool soldOut = shown.stock <= 0 && !shown.isMisc();
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == Stock && shown.isMisc() ? QString() : text(shown, index.column());
    case Qt::TextAlignmentRole:
        return int((index.column() == Price || index.column() == Stock ? Qt::AlignRight : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    case Qt::BackgroundRole:
        return soldOut && index.column() == Stock ? QVariant(Look::shared.background) : QVariant();
    case Qt::ForegroundRole:
        return soldOut && index.column() == Stock ? QVariant(Look::shared.text) : QVariant();
    case Qt::AccessibleTextRole:
        return index.column() == Name ? QVariant(spokenText(index.row())) : QVariant();
    case HeadingRole:
        return beginsGroup(index.row()) ? QVariant(shown.type) : QVariant();
    default:
        return {};
    }
}

QVariant StoreModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((section == Price || section == Stock ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    static const QStringList headings{u"Item"_s, u"Price"_s, u"Key"_s, u"Stock"_s};
    return role == Qt::DisplayRole ? QVariant(headings[section]) : QVariant();
}
