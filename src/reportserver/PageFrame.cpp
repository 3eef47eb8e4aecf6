#include "reportserver/PageFrame.h"

#include "app/Formats.h"
#include "reportserver/Html.h"

using namespace Qt::StringLiterals;

namespace {

QString listOf(const QStringList &links)
{
    QString html = u"<ul>"_s;
    for (const QString &link : links)
        html += u"<li>"_s + link + u"</li>"_s;
    return html + u"</ul>"_s;
}

QString pathOf(int counter, ReportPeriod::Kind kind, QDate day)
{
    return counter > 0 ? counterPath(counter, kind, day) : bookingPath(kind, day);
}

// The day's own fields come with it, so that another day is shown of the same thing.
QString dayForm(const PageWork &work, int counter)
{
    const QString page = counter > 0 ? u"/report/counter.asp"_s : u"/report/booking.asp"_s;
    QString html = u"<form action=\"%1\" method=\"get\">"_s.arg(page);
    if (counter > 0)
        html += u"<input type=\"hidden\" name=\"counter\" value=\"%1\">"_s.arg(counter);
    if (work.period.kind != ReportPeriod::Kind::Day)
        html += u"<input type=\"hidden\" name=\"period\" value=\"%1\">"_s.arg(wordOf(work.period.kind));
    return html + u"<label>Day <input type=\"date\" name=\"date\" required value=\"%1\"></label> "
                  "<button>Show</button></form>"_s.arg(sqlDate(work.period.first));
}

} // namespace

QString bookingPath(ReportPeriod::Kind kind, QDate day)
{
    const QString path = u"/report/booking.asp?date="_s + sqlDate(day);
    return kind == ReportPeriod::Kind::Day ? path : path + u"&period="_s + wordOf(kind);
}

QString counterPath(int counter, ReportPeriod::Kind kind, QDate day)
{
    const QString path = u"/report/counter.asp?counter=%1&date=%2"_s.arg(QString::number(counter), sqlDate(day));
    return kind == ReportPeriod::Kind::Day ? path : path + u"&period="_s + wordOf(kind);
}

QString navigation(const PageWork &work, int counter)
{
    using Kind = ReportPeriod::Kind;
    const ReportPeriod &shown = work.period;
    // From a week or month the day that is offered is today when it lies in it.
    const QDate today = businessDayOf(work.now, work.settings.hours());
    const QDate day = today >= shown.first && today <= shown.last ? today : shown.first;
    QStringList periods;
    for (const auto &[kind, words] :
         {std::pair{Kind::Day, u"Day"_s}, {Kind::Week, u"Week"_s}, {Kind::Month, u"Month"_s}})
        periods << Html::link(pathOf(counter, kind, day), words, kind == shown.kind);
    const QStringList turns{Html::link(pathOf(counter, shown.kind, shown.before().first), u"◀ Before"_s),
                            Html::link(pathOf(counter, shown.kind, shown.after().first), u"After ▶"_s)};
    QStringList subjects{Html::link(bookingPath(shown.kind, shown.first), u"Bookings"_s, counter == 0)};
    for (const int other : work.counters)
        subjects << Html::link(counterPath(other, shown.kind, shown.first), u"Counter "_s + QString::number(other),
                               counter == other);
    return u"<nav aria-label=\"Reports\">"_s + listOf(subjects) + listOf(periods) + listOf(turns) +
           dayForm(work, counter) + u"</nav>\n"_s;
}

QByteArray framed(const PageWork &work, const QString &title, const QString &navigation, const QString &content)
{
    const QString centre = work.settings.centreName.isEmpty() ? u"All reports"_s : work.settings.centreName;
    const QString made = u"Made on "_s + sqlDateTime(work.now).left(16) + u" by Tamsora " TAMSORA_VERSION "."_s;
    return Html::document({title, centre, navigation, content, made});
}
