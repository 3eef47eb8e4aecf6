#pragma once

#include "reportserver/ReportPeriod.h"
#include "reportserver/ReportSettings.h"

#include <QDateTime>

#include <stdexcept>
#include <vector>

class DbConnection;

/// The request cannot be answered; what() is told to the person.
class RefusedRequest : public std::runtime_error
{
public:
    RefusedRequest(int number, const QString &words) : std::runtime_error(words.toStdString()), status(number) {}

    int status;
};

/// What every page is made with.
struct PageWork
{
    const ReportSettings &settings;
    DbConnection &connection;
    QDateTime now;
    ReportPeriod period;
    std::vector<int> counters;
};

/// Addresses of pages, not escaped.
QString bookingPath(ReportPeriod::Kind kind, QDate day);
QString counterPath(int counter, ReportPeriod::Kind kind, QDate day);

/// Links to the other periods, to before and after, to the other counters, and the field for another day. The page's
/// own counter is 0 for the bookings.
QString navigation(const PageWork &work, int counter);

/// The document with a footer that says when it was made.
QByteArray framed(const PageWork &work, const QString &title, const QString &navigation, const QString &content);
