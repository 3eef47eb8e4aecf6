#pragma once

#include "app/BusinessDay.h"

#include <QDate>

#include <optional>

/// The business days that a report is about: one, a week from Monday, or a month.
struct ReportPeriod
{
    enum class Kind { Day, Week, Month };

    Kind kind = Kind::Day;
    QDate first;
    QDate last; ///< itself included

    /// The period of this kind that the day lies in.
    static ReportPeriod around(Kind kind, QDate day);

    [[nodiscard]] ReportPeriod before() const { return around(kind, first.addDays(-1)); }
    [[nodiscard]] ReportPeriod after() const { return around(kind, last.addDays(1)); }
    [[nodiscard]] int days() const { return int(first.daysTo(last)) + 1; }
    /// "Saturday, 14 November 2026", "Week from 9 to 15 November 2026", "November 2026"
    [[nodiscard]] QString inWords() const;

    /// The first and the last text that a slot of these days can have.
    [[nodiscard]] QString firstSlotText() const;
    [[nodiscard]] QString lastSlotText() const;
};

/// "day", "week" or "month", as it stands in an address; nothing for any other word.
QString wordOf(ReportPeriod::Kind kind);
std::optional<ReportPeriod::Kind> kindOf(const QString &word);

/// The hour at which the till changes to the next business day: the middle of the closed hours, so that the evening's
/// shift is still ended on its own day and the morning's goods are sold on theirs.
int tillChangeHour(WorkingHours hours);

/// The moment, as text, at which the till changes to this business day.
QString tillDayBegins(QDate day, WorkingHours hours);

/// The business day of a moment, for the till and for a page that is asked for without a day.
QDate businessDayOf(const QDateTime &moment, WorkingHours hours);
