#include "reportserver/Html.h"

#include "reportserver/PageStyle.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Html {

namespace {

QString cellHtml(const Cell &cell)
{
    if (cell.percent >= 0)
        return u"<svg class=\"bar\" viewBox=\"0 0 100 8\" preserveAspectRatio=\"none\" aria-hidden=\"true\"><rect "
               "class=\"paid\" width=\"%1\" height=\"8\"/></svg>"_s.arg(cell.percent);
    if (cell.text.isEmpty())
        return {};
    if (!cell.path.isEmpty())
        return link(cell.path, cell.text);
    // A name in another script than the rest must not turn the line round.
    return u"<bdi>"_s + escaped(cell.text) + u"</bdi>"_s;
}

QString cells(const std::vector<Cell> &row, const Table &table)
{
    QString html;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const Column &column = table.columns.at(i);
        html += u"<td"_s;
        if (column.isFigure)
            html += u" class=\"figure\""_s;
        if (table.isWide)
            html += u" data-label=\""_s + escaped(column.title) + u'"';
        html += u'>' + cellHtml(row[i]) + u"</td>"_s;
    }
    return html;
}

QString headOf(const Table &table)
{
    QString html = u"<thead><tr>"_s;
    for (const Column &column : table.columns)
        html += (column.isFigure ? u"<th scope=\"col\" class=\"figure\">"_s : u"<th scope=\"col\">"_s) +
                escaped(column.title) + u"</th>"_s;
    return html + u"</tr></thead>"_s;
}

} // namespace

Cell Cell::bar(double part)
{
    Cell cell;
    cell.percent = int(std::lround(100 * std::clamp(part, 0.0, 1.0)));
    return cell;
}

QString escaped(const QString &text)
{
    QString html = text.toHtmlEscaped();
    html.replace(u'\'', u"&#39;"_s);
    html.remove(QChar(u'\0'));
    return html;
}

QString table(const Table &table)
{
    if (table.rows.empty())
        return paragraph(table.whenEmpty);
    QString html = (table.isWide ? u"<table class=\"wide\">"_s : u"<table>"_s) + headOf(table) + u"<tbody>"_s;
    for (const std::vector<Cell> &row : table.rows)
        html += u"<tr>"_s + cells(row, table) + u"</tr>"_s;
    html += u"</tbody>"_s;
    if (!table.sums.empty())
        html += u"<tfoot><tr>"_s + cells(table.sums, table) + u"</tr></tfoot>"_s;
    return html + u"</table>\n"_s;
}

QString tiles(const std::vector<Tile> &tiles)
{
    QString html = u"<dl class=\"tiles\">"_s;
    for (const Tile &tile : tiles) {
        html += u"<div><dt>"_s + escaped(tile.title) + u"</dt><dd><strong>"_s + escaped(tile.figure) + u"</strong>"_s;
        if (!tile.remark.isEmpty())
            html += u" <span>"_s + escaped(tile.remark) + u"</span>"_s;
        html += u"</dd></div>"_s;
    }
    return html + u"</dl>\n"_s;
}

QString sideBySide(const QString &first, const QString &second)
{
    return u"<div class=\"beside\"><section>"_s + first + u"</section><section>"_s + second + u"</section></div>\n"_s;
}

QString heading(const QString &text)
{
    return u"<h2>"_s + escaped(text) + u"</h2>\n"_s;
}

QString subheading(const QString &text)
{
    return u"<h3>"_s + escaped(text) + u"</h3>\n"_s;
}

QString paragraph(const QString &text)
{
    return u"<p>"_s + escaped(text) + u"</p>\n"_s;
}

QString link(const QString &path, const QString &text, bool isHere)
{
    return u"<a href=\""_s + escaped(path) + (isHere ? u"\" aria-current=\"page\">"_s : u"\">"_s) + escaped(text) +
           u"</a>"_s;
}

QByteArray document(const Page &page)
{
    const QString title = escaped(page.title);
    QString html = u"<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
                   "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"><title>"_s;
    html += title + u"</title><style>"_s + QLatin1StringView(pageStyle) + u"</style></head>\n<body><header>"_s;
    if (!page.centreName.isEmpty())
        html += u"<p class=\"centre\">"_s + link(u"/"_s, page.centreName) + u"</p>"_s;
    html += u"<h1>"_s + title + u"</h1></header>\n"_s + page.navigation + u"<main>\n"_s + page.content + u"</main>\n"_s;
    if (!page.footer.isEmpty())
        html += u"<footer>"_s + escaped(page.footer) + u"</footer>"_s;
    return (html + u"</body></html>\n"_s).toUtf8();
}

QByteArray styleSource()
{
    return "'sha256-" + QCryptographicHash::hash(pageStyle, QCryptographicHash::Sha256).toBase64() + "'";
}

} // namespace Html
