#pragma once

#include <QString>

#include <memory>

struct st_mysql_res;

/// The rows of one query, all of them on this side, read front to back.
class DbRows
{
public:
    explicit DbRows(st_mysql_res *result);

    /// Moves to the first, then to the next row; false at the end.
    bool next();
    /// The value in the present row; empty for NULL. Throws DbError when there is no such column.
    [[nodiscard]] QString text(const char *column) const;
    [[nodiscard]] QString text(unsigned column) const;
    /// The value as a number; 0 for NULL or a text that is no number.
    [[nodiscard]] int number(const char *column) const;
    [[nodiscard]] double amount(const char *column) const;
    [[nodiscard]] qsizetype size() const;

private:
    [[nodiscard]] unsigned columnIndex(const char *column) const;

    std::shared_ptr<st_mysql_res> m_result;
    char **m_row = nullptr;
    unsigned long *m_lengths = nullptr;
};
