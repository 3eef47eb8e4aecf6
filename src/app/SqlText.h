#pragma once

#include <QString>

/// Makes a value fit to stand between single quotes: every ' becomes \' in place; the result is also returned.
/// A backslash is passed on as it stands, so a value that ends in one breaks its statement.
QString EscapeQuotes(QString &value);

/// The same for a value that stays as it is.
QString quoted(QString value);

/// For a value that may hold what nobody can type, a backslash too: names out of the tables.
QString literal(QString value);

/// The counter's own table: "tbl_counter" and 3 give tbl_counter3.
QString counterTable(const QString &base, int counter);

namespace SqlText {

inline QString textOf(const QString &value)
{
    return value;
}
inline QString textOf(int value)
{
    return QString::number(value);
}
inline QString textOf(qint64 value)
{
    return QString::number(value);
}
inline QString textOf(quint64 value)
{
    return QString::number(value);
}

} // namespace SqlText

/// A statement from its pattern: %1, %2 … become the values in one pass, so a value that reads %1 stays as it is.
template <typename... Values>
QString sql(const QString &pattern, const Values &...values)
{
    return pattern.arg(SqlText::textOf(values)...);
}
