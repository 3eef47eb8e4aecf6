#pragma once

#include <QTest>

#include <algorithm>
#include <array>
#include <stdexcept>

/// A test's rows drawn as text, one a line, the row's name first and then its cells:
///     first hour | 2026-11-14 | 8
void drawnRows(const QString &table);

/// The cells of the row that the test now runs for, of which there must be so many.
template <std::size_t Count>
std::array<QString, Count> cells()
{
    QFETCH(const QStringList, cells);
    std::array<QString, Count> texts;
    if (cells.size() != qsizetype(Count))
        throw std::invalid_argument("No row: " + cells.join(u'|').toStdString());
    std::ranges::copy(cells, texts.begin());
    return texts;
}

/// "a; b" is a and b; an empty text is no entry.
QStringList listOf(const QString &text);
