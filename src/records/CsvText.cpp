#include "records/CsvText.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar quote = u'"';

bool endsLine(QChar c)
{
    return c == u'\n' || c == u'\r';
}

QChar separatorOf(const QString &text)
{
    std::array<int, 3> counts{};
    constexpr std::array separators{u',', u';', u'\t'};
    bool isQuoted = false;
    for (const QChar c : text) {
        if (c == quote)
            isQuoted = !isQuoted;
        if (!isQuoted && endsLine(c))
            break;
        const auto found = std::find(separators.begin(), separators.end(), c.unicode());
        if (!isQuoted && found != separators.end())
            ++counts.at(std::size_t(found - separators.begin()));
    }
    return separators.at(std::size_t(std::max_element(counts.begin(), counts.end()) - counts.begin()));
}

class CsvReader
{
public:
    explicit CsvReader(const QString &text) : m_text(text), m_separator(separatorOf(text)) {}

    bool atEnd() const { return m_at >= m_text.size(); }

    CsvLine takeLine()
    {
        CsvLine line{m_line};
        do
            line.cells << takeCell(line);
        while (take(m_separator));
        takeLineEnd();
        return line;
    }

private:
    bool take(QChar wanted)
    {
        if (atEnd() || m_text[m_at] != wanted)
            return false;
        ++m_at;
        return true;
    }

    void takeLineEnd()
    {
        const bool hasReturn = take(u'\r');
        if (take(u'\n') || hasReturn)
            ++m_line;
    }

    QString takeCell(CsvLine &line)
    {
        QString cell = take(quote) ? takeQuoted(line.openQuote) : QString();
        const qsizetype rest = m_at;
        while (!atEnd() && m_text[m_at] != m_separator && !endsLine(m_text[m_at]))
            ++m_at;
        const bool wasQuoted = rest > 0 && m_text[rest - 1] == quote;
        line.isBroken = line.isBroken || (wasQuoted && m_at > rest);
        return cell.append(QStringView(m_text).mid(rest, m_at - rest));
    }

    QString takeQuoted(int &openQuote)
    {
        const int opened = m_line;
        QString cell;
        for (; !atEnd(); ++m_at) {
            if (m_text[m_at] == quote && (++m_at, atEnd() || m_text[m_at] != quote))
                return cell;
            if (m_text[m_at] == u'\n')
                ++m_line;
            cell += m_text[m_at];
        }
        openQuote = opened;
        return cell;
    }

    const QString &m_text;
    const QChar m_separator;
    qsizetype m_at = 0;
    int m_line = 1;
};

} // namespace

std::vector<CsvLine> readCsv(const QString &text)
{
    std::vector<CsvLine> lines;
    for (CsvReader reader(text); !reader.atEnd();) {
        CsvLine line = reader.takeLine();
        if (line.isBroken || line.openQuote > 0 ||
            std::any_of(line.cells.cbegin(), line.cells.cend(),
                        [](const QString &cell) { return !cell.trimmed().isEmpty(); }))
            lines.push_back(std::move(line));
    }
    return lines;
}

QString csvLine(const QStringList &cells)
{
    static const QRegularExpression formula(u"^'*[=+\\-@\\t\\r]"_s);
    static const QRegularExpression special(u"[\",;\\t\\r\\n]|^\\s|\\s$"_s);
    QStringList written;
    for (QString cell : cells) {
        if (formula.match(cell).hasMatch())
            cell.prepend(u'\'');
        if (special.match(cell).hasMatch())
            cell = quote + cell.replace(quote, u"\"\""_s) + quote;
        written << cell;
    }
    return written.join(u',') + u"\r\n"_s;
}

QString fromSpreadsheet(const QString &cell)
{
    static const QRegularExpression guarded(u"^'+[=+\\-@\\t\\r]"_s);
    return guarded.match(cell).hasMatch() ? cell.mid(1) : cell;
}
