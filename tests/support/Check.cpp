#include "support/Check.h"

#include "app/SqlText.h"

#include <QFile>
#include <QRegularExpression>

#include <stdexcept>

using namespace Qt::StringLiterals;

QStringList findings(const PrivateServer &server, const QStringList &pairs)
{
    QFile check(QStringLiteral(TAMSORA_DATABASE "/check.sql"));
    if (!check.open(QIODevice::ReadOnly))
        throw std::runtime_error("There is no check.sql in " TAMSORA_DATABASE);
    QStringList entries;
    for (const QString &pair : pairs)
        entries << u'[' + QString(pair).replace(u'&', u',') + u']';
    QString others;
    for (const QString &table :
         server.rows(u"SHOW TABLES LIKE 'tbl\\_counter_'"_s).filter(QRegularExpression(u"[^1]$"_s)))
        others += sql(u"UNION ALL SELECT %1, c_transaction, c_datetime, c_item, c_itemtotal, c_receipt FROM %2 "_s,
                      table.right(1), table);
    return server.rows(u"SET @last_hour=2, @all_counters=1, @pairs='["_s + entries.join(u',') + u"]';"_s +
                       QString::fromUtf8(check.readAll()).replace(u"-- other counters"_s, others));
}
