#include "app/DbRows.h"

#include "app/DbError.h"

#include <mysql.h>

using namespace Qt::StringLiterals;

DbRows::DbRows(st_mysql_res *result) : m_result(result, &mysql_free_result) {}

bool DbRows::next()
{
    m_row = mysql_fetch_row(m_result.get());
    m_lengths = m_row ? mysql_fetch_lengths(m_result.get()) : nullptr;
    return m_row != nullptr;
}

unsigned DbRows::columnIndex(const char *column) const
{
    const unsigned count = mysql_num_fields(m_result.get());
    const MYSQL_FIELD *fields = mysql_fetch_fields(m_result.get());
    for (unsigned i = 0; i < count; ++i)
        if (qstricmp(fields[i].name, column) == 0)
            return i;
    throw DbError(u"The result has no column "_s + QString::fromUtf8(column), 0);
}

QString DbRows::text(unsigned column) const
{
    if (!m_row)
        throw DbError(u"There is no row to read"_s, 0);
    return m_row[column] ? QString::fromUtf8(m_row[column], qsizetype(m_lengths[column])) : QString();
}

QString DbRows::text(const char *column) const
{
    return text(columnIndex(column));
}

int DbRows::number(const char *column) const
{
    return text(column).toInt();
}

double DbRows::amount(const char *column) const
{
    return text(column).toDouble();
}

qsizetype DbRows::size() const
{
    return qsizetype(mysql_num_rows(m_result.get()));
}
