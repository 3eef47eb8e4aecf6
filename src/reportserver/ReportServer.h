#pragma once

#include "reportserver/ReportSettings.h"

#include <QDateTime>

#include <functional>
#include <memory>

/// The web server of the report pages. Each of its working threads keeps a connection to the database of its own.
/// Nothing is kept by a browser, no page runs a script, and only GET and HEAD are answered.
class ReportServer
{
public:
    explicit ReportServer(ReportSettings settings, std::function<QDateTime()> clock = &QDateTime::currentDateTime);
    ~ReportServer();
    ReportServer(const ReportServer &) = delete;
    ReportServer &operator=(const ReportServer &) = delete;

    /// Takes the address and port of the settings and gives the port; 0 when that is not to be had.
    int bind();
    /// Serves until stop(), once, after bind().
    void serve();
    /// From any thread, or from a signal's handler.
    void stop();

private:
    class Private;
    std::unique_ptr<Private> d;
};
