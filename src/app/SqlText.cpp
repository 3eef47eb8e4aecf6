#include "app/SqlText.h"

QString EscapeQuotes(QString &value)
{
    value.replace(u'\'', QLatin1String("\\'"));
    return value;
}
