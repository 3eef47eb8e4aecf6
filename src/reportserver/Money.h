#pragma once

#include "app/Formats.h"

#include <QString>

#include <cmath>

/// "12.50", as the database gives an amount, in cents; 0 for what is no amount.
inline qint64 centsOf(const QString &amount)
{
    return std::llround(amount.toDouble() * 100);
}

/// 1234.50 as "1,234.50"
inline QString moneyText(qint64 cents)
{
    return formatNumber(double(cents) / 100, QStringLiteral("##,##0.00"));
}
