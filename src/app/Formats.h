#pragma once

#include <QDateTime>
#include <QString>

// The pattern is made of 0 and # (digit places; a 0 and all places between it and the point are always shown), at most
// one point, and a comma among the places left of it, which groups thousands. Rounds the number's 15-digit decimal
// half away from zero: 1.005 under ##0.00 is 1.01.
QString formatNumber(double value, const QString &pattern);

// 7 is 07.
QString formatTwoDigits(int value);

// A number within an SQL text or a label: 15 significant digits, no trailing zeros, as 1.5.
QString plainNumber(double value);

// 2026-11-14 00:05:09
QString sqlDateTime(const QDateTime &moment);

// 2026-11-14
QString sqlDate(const QDate &date);

// 14 Nov 12:05:09 AM
QString clockText(const QDateTime &moment);

// English full name, whatever the system's language: the rates are stored under it.
QString weekdayName(const QDate &date);
