#pragma once

#include <QString>

#include <vector>

/// What report pages are made of. Every text that comes in is a plain one and is escaped here.
namespace Html {

/// A text as it may stand in a page, also in an attribute between double quotes.
QString escaped(const QString &text);

struct Column
{
    QString title;
    bool isFigure = false; ///< right-aligned, in figures of one width
};

struct Cell
{
    Cell(QString words = {}, QString address = {}) : text(std::move(words)), path(std::move(address)) {}
    /// A bar as long as this part of the column's width.
    static Cell bar(double part);

    QString text;
    QString path; ///< where the text leads to; empty for nowhere
    int percent = -1;
};

/// A table. A wide one becomes a list of cards on a small screen.
struct Table
{
    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows = {};
    std::vector<Cell> sums = {}; ///< the last row; empty for none
    QString whenEmpty = {};      ///< the sentence that stands in place of a table without rows
    bool isWide = false;
};
QString table(const Table &table);

/// A figure with what it is and what else is to be said of it.
struct Tile
{
    QString title;
    QString figure;
    QString remark = {};
};
QString tiles(const std::vector<Tile> &tiles);

/// Two parts beside each other where there is room.
QString sideBySide(const QString &first, const QString &second);
QString heading(const QString &text);
QString subheading(const QString &text);
QString paragraph(const QString &text);
/// The path may have a query; it is escaped too. The page that is shown itself is marked.
QString link(const QString &path, const QString &text, bool isHere = false);

/// A whole page. `navigation` and `content` are made of the above.
struct Page
{
    QString title;
    QString centreName;
    QString navigation;
    QString content;
    QString footer;
};
QByteArray document(const Page &page);

/// What the pages' one style sheet is known by in a content security policy: "'sha256-…'".
QByteArray styleSource();

} // namespace Html
