#pragma once

#include "reportserver/ReportServer.h"

#include <thread>

/// A report server on a free loopback port while it lives, and visitors of it.
class ServedReports
{
public:
    explicit ServedReports(const AppSettings &centre);
    ~ServedReports();
    ServedReports(const ServedReports &) = delete;
    ServedReports &operator=(const ServedReports &) = delete;

    /// So many visitors ask for a page at the same time, each that often; throws std::runtime_error when one of them
    /// does not get it.
    void visit(const QString &path, int visitors, int times) const;

private:
    ReportServer m_server;
    int m_port = 0;
    std::thread m_serving;
};
