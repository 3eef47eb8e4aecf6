#pragma once

#include <QString>

#include <stdexcept>

// what() is "Type mismatch" for a text that is no number, "Overflow" for a number out of range.
class ConversionError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Typed text to number: point decimal, commas between digits ignored, sign in front or behind, (8) is -8, a dollar
// sign, exponent, &HFF and &O17. Throws ConversionError, also for an empty text.
double toDouble(const QString &text);

// The same, rounded to the nearest whole number (a half goes to the even one), -32768..32767.
qint16 toInt16(const QString &text);

// The number that a text begins with, 0 when there is none; blanks, tabs and line feeds play no part, and only a point
// is taken: "12 a" is 12, "8 0" is 80, "1,5" is 1. Throws ConversionError "Overflow" alone.
double leadingNumber(QString text);
