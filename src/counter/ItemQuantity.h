#pragma once

#include <QString>

/// Quantities and prices as they are keyed for goods.

/// What the keypad shows after one of its digits: what it showed, without points, and the digit.
QString numberAfterPad(const QString &shown, QChar digit);

/// Nothing is sold: an empty quantity, or one of 0. Throws ConversionError.
bool sellsNothing(const QString &quantity);
/// A whole quantity's price under a pattern of formatNumber. Throws ConversionError, above 32767 too.
QString priceOfQuantity(const QString &quantity, const QString &unitPrice, const QString &pattern);
/// A price typed by hand, under ##0.00. Throws ConversionError, also for one that no table could hold.
QString typedPrice(const QString &text);
