#include "support/DrawnRows.h"

#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

void drawnRows(std::initializer_list<const char *> columns, const QString &table)
{
    for (const char *column : columns)
        QTest::addColumn<QString>(column);
    const QStringList lines = table.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QStringList cells = line.split(u'|');
        if (line.trimmed().isEmpty())
            continue;
        if (cells.size() != qsizetype(columns.size()) + 1)
            throw std::invalid_argument("No row: " + line.toStdString());
        QTestData &row = QTest::newRow(qPrintable(cells.first().trimmed()));
        for (const QString &cell : cells.mid(1))
            row << cell.trimmed();
    }
}

QStringList listOf(const QString &text)
{
    return text.isEmpty() ? QStringList() : text.split(u"; "_s);
}
