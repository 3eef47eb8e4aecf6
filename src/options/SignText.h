#pragma once

#include <QString>

#include <optional>

/// A command of bytes as people enter it: what cannot be typed stands as two hexadecimal digits, <1B>p0 is Escape, p,
/// 0. A "<" itself is <3C>.
QString shownSigns(const QString &command);
/// Nothing for a text that is not such.
std::optional<QString> meantSigns(const QString &shown);
