#include "records/RegisterModel.h"

#include <QTextDocument>

#include <algorithm>

void RegisterModel::setRows(std::vector<RegisterRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int RegisterModel::rowOf(const QString &id) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const RegisterRow &row) { return row.id == id; });
    return found == m_rows.end() ? -1 : int(found - m_rows.begin());
}

int RegisterModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int RegisterModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_records.listed.size());
}

const RegisterField &RegisterModel::field(int column) const
{
    return m_records.fields[m_records.listed.at(std::size_t(column))];
}

QVariant RegisterModel::data(const QModelIndex &index, int role) const
{
    const QString &value = row(index.row()).values[qsizetype(m_records.listed.at(std::size_t(index.column())))];
    switch (role) {
    case Qt::DisplayRole:
        return value;
    case Qt::ToolTipRole:
        return value.isEmpty() ? QString() : Qt::convertFromPlainText(value);
    case Qt::TextAlignmentRole:
        return headerData(index.column(), Qt::Horizontal, role);
    default:
        return {};
    }
}

QVariant RegisterModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((field(section).kind == RegisterField::Kind::Price ? Qt::AlignRight : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    return role == Qt::DisplayRole ? QVariant(field(section).name) : QVariant();
}
