#include "app/Conversions.h"

#include <QByteArray>
#include <QRegularExpression>

#include <cmath>
#include <string>
#include <utility>

namespace {

[[noreturn]] void mismatch()
{
    throw ConversionError("Type mismatch");
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// What may stand round the digits, each at most once and in any order, blanks in between.
struct Dress
{
    bool plus = false;
    bool minus = false;
    bool dollar = false;
    bool open = false;
    bool close = false;

    bool take(char c, bool behind)
    {
        const bool noSign = !plus && !minus && !open;
        switch (c) {
        case '+':
            return put(plus, noSign);
        case '-':
            return put(minus, noSign);
        case '(':
            return put(open, noSign && !behind);
        case ')':
            return put(close, open && !close && behind);
        case '$':
            return put(dollar, !dollar);
        default:
            return isBlank(c);
        }
    }

private:
    static bool put(bool &mark, bool allowed)
    {
        mark = mark || allowed;
        return allowed;
    }
};

class NumberReader
{
public:
    explicit NumberReader(QByteArray text) : m_text(std::move(text)) {}

    double read()
    {
        takeDress(false);
        takeDigits();
        takeExponent();
        takeDress(true);
        if (m_at != m_text.size() || m_dress.open != m_dress.close)
            mismatch();
        // Not QByteArray::toDouble, for which 1e400 is 0.
        const double size = QString::fromLatin1(m_plain).toDouble();
        if (std::isinf(size))
            throw ConversionError("Overflow");
        return m_dress.minus || m_dress.open ? -size : size;
    }

private:
    char here() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    void takeDress(bool behind)
    {
        while (m_at < m_text.size() && m_dress.take(m_text[m_at], behind))
            ++m_at;
    }

    // Digits, after the first of them commas too, a point, digits; into m_plain without the commas.
    void takeDigits()
    {
        bool any = false;
        bool point = false;
        for (;; ++m_at) {
            const char c = here();
            if (isDigit(c) || (c == '.' && !point))
                m_plain += c;
            else if (c != ',' || !any || point)
                break;
            any = any || isDigit(c);
            point = point || c == '.';
        }
        if (!any)
            mismatch();
    }

    void takeExponent()
    {
        if (here() != 'e' && here() != 'E')
            return;
        m_plain += m_text[m_at++];
        if (here() == '+' || here() == '-')
            m_plain += m_text[m_at++];
        if (!isDigit(here()))
            mismatch();
        while (isDigit(here()))
            m_plain += m_text[m_at++];
    }

    QByteArray m_text;
    QByteArray m_plain;
    qsizetype m_at = 0;
    Dress m_dress;
};

// &H and &O with what follows them.
double fromOtherBase(const QByteArray &text)
{
    const int base = text[1] == 'h' ? 16 : text[1] == 'o' ? 8 : 0;
    const QByteArray digits = text.mid(2);
    const QByteArray known = QByteArrayLiteral("0123456789abcdef").first(base);
    if (digits.isEmpty() || digits.toStdString().find_first_not_of(known.toStdString()) != std::string::npos)
        mismatch();
    bool fits = false;
    const uint number = digits.toUInt(&fits, base);
    if (!fits)
        throw ConversionError("Overflow");
    return number;
}

} // namespace

double toDouble(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    const QByteArray trimmed = bytes.trimmed().toLower();
    return trimmed.size() > 1 && trimmed[0] == '&' ? fromOtherBase(trimmed) : NumberReader(bytes).read();
}

qint16 toInt16(const QString &text)
{
    const double whole = std::nearbyint(toDouble(text));
    if (whole < -32768 || whole > 32767)
        throw ConversionError("Overflow");
    return static_cast<qint16>(whole);
}

double leadingNumber(QString text)
{
    static const QRegularExpression blanks(QStringLiteral("[ \\t\\n]"));
    static const QRegularExpression decimal(QStringLiteral("^[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eEdD][+-]?[0-9]+)?"));
    static const QRegularExpression otherBase(QStringLiteral("^&(?:[hH][0-9a-fA-F]+|[oO][0-7]+)"));
    text.remove(blanks);
    if (const auto match = otherBase.match(text); match.hasMatch())
        return toDouble(match.captured());
    const QString number =
        decimal.match(text).captured().replace(QLatin1Char('d'), QLatin1Char('e'), Qt::CaseInsensitive);
    return number.isEmpty() ? 0 : toDouble(number);
}
