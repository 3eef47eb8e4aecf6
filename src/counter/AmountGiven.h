#pragma once

#include <QString>

#include <vector>

/// The amount that a customer gives, keyed as into a cash register: digits only, the last two are cents.

/// The digits after a key: 0 to 9 (codes 48 to 57) are appended, Backspace (8) takes the last one; others do nothing.
QString digitsAfterKey(const QString &digits, int code);
/// 5 is 00.05, 12345 is 123.45, nothing is 00.00.
QString amountOfDigits(const QString &digits);
/// The digits of an amount of cents, at least one; 0 for what is below.
QString digitsOfAmount(qint64 cents);

/// What the change window shows; both texts are under ##.#0.
struct ChangeShown
{
    QString amountPaid;
    QString change; ///< empty for more digits than money has: a scanner was at work

    [[nodiscard]] bool isEnough() const; ///< neither empty nor below 0
};

/// Throws ConversionError for a total that is no number; an empty one is 0.
ChangeShown changeOf(const QString &digits, const QString &total);

/// What customers hand over for a total, in cents: for each note the smallest multiple of it that pays the
/// total, unless that is the total itself. The smallest comes first.
std::vector<qint64> amountsAbove(qint64 totalCents, const std::vector<qint64> &notes);

/// A price or total in cents, "" is 0. Throws ConversionError.
qint64 centsOf(const QString &amount);
