#pragma once

#include "records/Register.h"

#include <QAbstractTableModel>

/// The entries of a register as its list shows them.
class RegisterModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit RegisterModel(Register records) : m_records(std::move(records)) {}

    void setRows(std::vector<RegisterRow> rows);
    [[nodiscard]] const RegisterRow &row(int row) const { return m_rows.at(std::size_t(row)); }
    /// The row of the entry with this id, -1 for none.
    [[nodiscard]] int rowOf(const QString &id) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] const RegisterField &field(int column) const;

    const Register m_records;
    std::vector<RegisterRow> m_rows;
};
