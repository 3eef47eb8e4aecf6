#include "reportserver/ReportPeriod.h"

#include "app/Formats.h"

#include <QLocale>

using namespace Qt::StringLiterals;

ReportPeriod ReportPeriod::around(Kind kind, QDate day)
{
    switch (kind) {
    case Kind::Day:
        break;
    case Kind::Week: {
        const QDate monday = day.addDays(1 - day.dayOfWeek());
        return {kind, monday, monday.addDays(6)};
    }
    case Kind::Month:
        return {kind, QDate(day.year(), day.month(), 1), QDate(day.year(), day.month(), day.daysInMonth())};
    }
    return {Kind::Day, day, day};
}

QString ReportPeriod::inWords() const
{
    const QLocale english = QLocale::c();
    switch (kind) {
    case Kind::Day:
        break;
    case Kind::Week: {
        const QString from = first.year() != last.year()     ? u"d MMMM yyyy"_s
                             : first.month() != last.month() ? u"d MMMM"_s
                                                             : u"d"_s;
        return u"Week from %1 to %2"_s.arg(english.toString(first, from), english.toString(last, u"d MMMM yyyy"_s));
    }
    case Kind::Month:
        return english.toString(first, u"MMMM yyyy"_s);
    }
    return english.toString(first, u"dddd, d MMMM yyyy"_s);
}

QString ReportPeriod::firstSlotText() const
{
    return sqlDate(first) + u" 00:00:00"_s;
}

QString ReportPeriod::lastSlotText() const
{
    return sqlDate(last) + u" 24:59:59"_s;
}

QString wordOf(ReportPeriod::Kind kind)
{
    switch (kind) {
    case ReportPeriod::Kind::Day:
        break;
    case ReportPeriod::Kind::Week:
        return u"week"_s;
    case ReportPeriod::Kind::Month:
        return u"month"_s;
    }
    return u"day"_s;
}

std::optional<ReportPeriod::Kind> kindOf(const QString &word)
{
    for (const auto kind : {ReportPeriod::Kind::Day, ReportPeriod::Kind::Week, ReportPeriod::Kind::Month})
        if (word == wordOf(kind))
            return kind;
    return std::nullopt;
}

int tillChangeHour(WorkingHours hours)
{
    return (hours.last + 1 + hours.first) / 2;
}

QString tillDayBegins(QDate day, WorkingHours hours)
{
    return sqlDate(day) + u' ' + formatTwoDigits(tillChangeHour(hours)) + u":00:00"_s;
}

QDate businessDayOf(const QDateTime &moment, WorkingHours hours)
{
    return moment.time().hour() < tillChangeHour(hours) ? moment.date().addDays(-1) : moment.date();
}
