#include "reportserver/ReportPages.h"

#include "app/Database.h"
#include "reportserver/BookingPage.h"
#include "reportserver/CounterPage.h"
#include "reportserver/Html.h"
#include "reportserver/TillFigures.h"

#include <QRegularExpression>

#include <algorithm>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Nothing where it is not given. Throws RefusedRequest when it is given twice: which one was meant?
std::optional<QString> parameter(const ReportRequest &request, const QString &name)
{
    std::optional<QString> value;
    for (const auto &[key, text] : request.parameters) {
        if (key != name)
            continue;
        if (value)
            throw RefusedRequest(400, u"The address says \"%1\" twice."_s.arg(name));
        value = text;
    }
    return value;
}

QDate dayOf(const ReportRequest &request, QDate today)
{
    const auto text = parameter(request, u"date"_s);
    if (!text)
        return today;
    static const QRegularExpression form(u"\\A[12][0-9]{3}-[0-9]{2}-[0-9]{2}\\z"_s);
    const QDate day = form.match(*text).hasMatch() ? QDate::fromString(*text, Qt::ISODate) : QDate();
    if (!day.isValid())
        throw RefusedRequest(400, u"\"date\" must be a day of the calendar as year-month-day, such as 2026-11-14."_s);
    return day;
}

ReportPeriod::Kind kindIn(const ReportRequest &request)
{
    const auto kind = kindOf(parameter(request, u"period"_s).value_or(u"day"_s));
    if (!kind)
        throw RefusedRequest(400, u"\"period\" must be day, week or month."_s);
    return *kind;
}

QString counterIn(const ReportRequest &request)
{
    static const QRegularExpression form(u"\\A[1-9][0-9]{0,4}\\z"_s);
    QString text = parameter(request, u"counter"_s).value_or(QString());
    if (!form.match(text).hasMatch())
        throw RefusedRequest(400, u"\"counter\" must be the number of a counter, such as 1."_s);
    return text;
}

int existing(const QString &counter, const std::vector<int> &counters)
{
    if (std::find(counters.begin(), counters.end(), counter.toInt()) == counters.end())
        throw RefusedRequest(404, u"There is no counter %1."_s.arg(counter));
    return counter.toInt();
}

QByteArray indexPage(const PageWork &work)
{
    using Kind = ReportPeriod::Kind;
    const QDate today = work.period.first;
    const auto row = [&](const QString &words, const auto &pathOf) {
        return std::vector<Html::Cell>{words,
                                       {u"Today"_s, pathOf(Kind::Day, today)},
                                       {u"The day before"_s, pathOf(Kind::Day, today.addDays(-1))},
                                       {u"This week"_s, pathOf(Kind::Week, today)},
                                       {u"This month"_s, pathOf(Kind::Month, today)}};
    };
    Html::Table table{{{u"Report"_s}, {u"Day"_s}, {u"Day before"_s}, {u"Week"_s}, {u"Month"_s}}};
    table.isWide = true;
    table.rows.push_back(row(u"Bookings and takings"_s, &bookingPath));
    for (const int counter : work.counters)
        table.rows.push_back(row(u"Counter %1"_s.arg(counter),
                                 [counter](Kind kind, QDate day) { return counterPath(counter, kind, day); }));
    const QString content = Html::paragraph(u"Today is "_s + work.period.inWords() + u'.') + Html::table(table);
    return framed(work, u"Reports"_s, {}, content);
}

using MakePage = std::function<QByteArray(const PageWork &)>;

/// All that a page reads, it reads as of one moment.
QByteArray pageOfOneMoment(const ReportSettings &settings, Database &database, const QDateTime &now,
                           const ReportPeriod &period, const MakePage &make)
{
    DbConnection connection(database);
    try {
        const PageWork work{settings, connection, now, period, readCounters(connection)};
        connection.execute(u"START TRANSACTION WITH CONSISTENT SNAPSHOT, READ ONLY"_s);
        QByteArray page = make(work);
        connection.execute(u"COMMIT"_s);
        return page;
    } catch (const std::exception &) {
        connection.drop(); // whatever state it is in
        throw;
    }
}

QByteArray pageFor(const ReportSettings &settings, Database &database, const QDateTime &now,
                   const ReportRequest &request)
{
    const bool isBookings = request.path == u"/report/booking.asp";
    const bool isCounter = request.path == u"/report/counter.asp";
    if (!isBookings && !isCounter && request.path != u"/")
        throw RefusedRequest(404, u"There is no such page. The reports begin at the first page of this server."_s);
    // Before the database is asked for anything.
    const auto period = ReportPeriod::around(kindIn(request), dayOf(request, businessDayOf(now, settings.hours())));
    const QString wanted = isCounter ? counterIn(request) : QString();
    const auto page = [&] {
        return pageOfOneMoment(settings, database, now, period, [&](const PageWork &work) {
            return isBookings  ? bookingPage(work)
                   : isCounter ? counterPage(work, existing(wanted, work.counters))
                               : indexPage(work);
        });
    };
    try {
        return page();
    } catch (const DbError &) {
        return page(); // over a new connection: the server may have been started anew
    }
}

} // namespace

ReportAnswer plainAnswer(int status, const QString &title, const QString &words)
{
    return {status, Html::document({title, u"All reports"_s, {}, Html::paragraph(words), {}})};
}

ReportAnswer answerReport(const ReportSettings &settings, Database &database, const QDateTime &now,
                          const ReportRequest &request, QString *logged)
{
    try {
        return {200, pageFor(settings, database, now, request)};
    } catch (const RefusedRequest &refused) {
        return plainAnswer(refused.status, refused.status == 404 ? u"Not found"_s : u"This cannot be shown"_s,
                           QString::fromUtf8(refused.what()));
    } catch (const std::exception &error) {
        if (logged)
            *logged = QString::fromUtf8(error.what());
        return plainAnswer(503, u"The report cannot be made now"_s,
                           u"The database does not answer as it should. Please try again in a minute; if that does not "
                           "help, tell whoever looks after the server."_s);
    }
}
