#pragma once

#include <QKeyEvent>
#include <QString>

#include <utility>

/// Tells the digits of a scanner, which end with Enter, from what is typed by the way: they follow each other quickly,
/// by the moments at which they were pressed.
class ScanReader
{
public:
    /// What has so many digits is no amount and no quantity, but a code.
    static constexpr qsizetype shortestCode = 8;

    void take(const QKeyEvent &event)
    {
        if (event.text().isEmpty())
            return;
        const QChar character = event.text().front();
        if (!isQuick(event) || !character.isDigit())
            m_digits.clear();
        m_last = event.timestamp();
        if (character.isDigit())
            m_digits += character;
    }

    /// Enter was pressed: the digits before it, empty for none.
    QString end(const QKeyEvent &event)
    {
        const QString digits = std::exchange(m_digits, {});
        return isQuick(event) ? digits : QString();
    }

private:
    [[nodiscard]] bool isQuick(const QKeyEvent &event) const { return event.timestamp() - m_last < longestGap; }

    static constexpr quint64 longestGap = 300; // milliseconds
    QString m_digits;
    quint64 m_last = 0;
};
