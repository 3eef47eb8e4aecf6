#include "support/Check.h"

#include <QFile>

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
    return server.rows(u"SET @last_hour=2, @pairs='["_s + entries.join(u',') + u"]';"_s +
                       QString::fromUtf8(check.readAll()));
}
