#include "support/DrawnRows.h"

using namespace Qt::StringLiterals;

void drawnRows(const QString &table)
{
    QTest::addColumn<QStringList>("cells");
    for (const QString &line : table.split(u'\n', Qt::SkipEmptyParts)) {
        QStringList cells = line.split(u'|');
        for (QString &cell : cells)
            cell = cell.trimmed();
        const QString name = cells.takeFirst();
        if (!name.isEmpty())
            QTest::newRow(qPrintable(name)) << cells;
    }
}

QStringList listOf(const QString &text)
{
    return text.isEmpty() ? QStringList() : text.split(u"; "_s);
}
