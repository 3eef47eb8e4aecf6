#pragma once

#include "app/Formats.h"

#include <QString>

#include <cmath>

inline qint64 toCents(double amount)
{
    return std::llround(amount * 100);
}

/// "12.50", as the database gives an amount, in cents; 0 for what is no amount.
inline qint64 toCents(const QString &amount)
{
    return toCents(amount.toDouble());
}

/// 1234.50 as "1,234.50"
inline QString centsText(qint64 cents)
{
    return formatNumber(double(cents) / 100, QStringLiteral("##,##0.00"));
}
