#pragma once

#include <QStringList>

#include <vector>

/// A line of a table that is kept as text (CSV): its cells, and on which line of the text it begins, from 1.
struct CsvLine
{
    int line = 0;
    QStringList cells = {};
    bool isBroken = false; ///< something stands behind a closing quote
    int openQuote = 0;     ///< the line of a quote that is never closed, so that the rest of the text is in this cell

    bool operator==(const CsvLine &) const = default;
};

/// Reads cells separated by commas, semicolons or tabs, whichever the first line has most of, quoted or not. Empty
/// lines are left out.
std::vector<CsvLine> readCsv(const QString &text);

/// A line with its end. A cell that a spreadsheet would run as a formula gets an apostrophe in front.
QString csvLine(const QStringList &cells);

/// A cell as it was before csvLine().
QString fromSpreadsheet(const QString &cell);
