#pragma once

#include "reportserver/ReportSettings.h"

#include <QDateTime>

#include <utility>
#include <vector>

class Database;

/// What a browser asks for: a path, and what stands behind its question mark.
struct ReportRequest
{
    QString path;
    std::vector<std::pair<QString, QString>> parameters = {};
};

struct ReportAnswer
{
    int status = 200;
    QByteArray html;
};

/// The pages:
///     /                                                 today's pages
///     /report/booking.asp?date=yyyy-mm-dd               the bookings and takings of a day,
///     /report/booking.asp?date=yyyy-mm-dd&period=week   of the week or month round it
///     /report/counter.asp?counter=1&date=yyyy-mm-dd     one counter's sales and shifts, with a period too
/// Without a date it is the business day of this moment.
/// Everything is answered with a page: 400 for a parameter that will not do, 404 for what is not there, 503 while the
/// database cannot be asked. The figures of a page are those of one moment. What failed is told in `logged`, if given.
ReportAnswer answerReport(const ReportSettings &settings, Database &database, const QDateTime &now,
                          const ReportRequest &request, QString *logged = nullptr);

/// A page that says no more than this.
ReportAnswer plainAnswer(int status, const QString &title, const QString &words);
