#pragma once

#include "app/DayRow.h"
#include "app/Station.h"

/// Days and hours as staff read them to a caller.

/// "Saturday 14 November 2026" for "2026-11-14"; a text that is no date stays as it is.
QString dayInWords(const QString &day);

/// What staff confirm: "Clear Court 1, 20:00", "Book Court 1, 08:00 to 10:00, 12:00 to 13:00".
QString taskInWords(const QString &task, const AppSettings &settings, const DaySelection &selection);
/// The same for one hour.
QString taskInWords(const QString &task, const AppSettings &settings, const SlotKey &slot);

/// The selected hours with neighbours joined: "08:00 to 10:00, 12:00 to 13:00".
QString hoursInWords(const DaySelection &selection);

/// "Court 1, Saturday 14 November 2026, 20:00"
QString slotInWords(const Station &station, const SlotKey &slot);
