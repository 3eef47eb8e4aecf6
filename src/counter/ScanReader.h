#pragma once

#include <QElapsedTimer>
#include <QString>

/// Tells the digits of a scanner, which end with Enter, from what is typed by the way: they follow each other quickly.
class ScanReader
{
public:
    /// A character that was pressed now.
    void take(QChar character)
    {
        if (!isQuick())
            m_digits.clear();
        m_since.start();
        if (character.isDigit())
            m_digits += character;
        else
            m_digits.clear();
    }

    /// Enter was pressed now: the digits before it, empty for none.
    QString end()
    {
        const QString digits = isQuick() ? m_digits : QString();
        m_digits.clear();
        return digits;
    }

private:
    [[nodiscard]] bool isQuick() const { return m_since.isValid() && m_since.elapsed() < longestGap; }

    static constexpr qint64 longestGap = 300; // milliseconds
    QString m_digits;
    QElapsedTimer m_since;
};
