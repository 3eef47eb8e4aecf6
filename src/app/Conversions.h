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
