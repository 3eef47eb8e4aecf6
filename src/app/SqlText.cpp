#include "app/SqlText.h"

QString EscapeQuotes(QString &value)
{
    value.replace(u'\'', QLatin1String("\\'"));
    return value;
}

QString quoted(QString value)
{
    return EscapeQuotes(value);
}

QString literal(QString value)
{
    value.replace(u'\\', QLatin1String("\\\\"));
    return EscapeQuotes(value);
}

QString counterTable(const QString &base, int counter)
{
    return base + QString::number(counter);
}
