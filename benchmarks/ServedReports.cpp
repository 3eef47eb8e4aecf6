#include "ServedReports.h"

#include "reports/PageFetch.h"

#include <future>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

ReportSettings onFreePort(const AppSettings &centre)
{
    ReportSettings settings;
    settings.centre = centre;
    settings.listenAddress = u"127.0.0.1"_s;
    return settings;
}

} // namespace

ServedReports::ServedReports(const AppSettings &centre)
    : m_server(onFreePort(centre)), m_port(m_server.bind()), m_serving([this] { m_server.serve(); })
{
}

ServedReports::~ServedReports()
{
    m_server.stop();
    m_serving.join();
}

void ServedReports::visit(const QString &path, int visitors, int times) const
{
    const QString address = u"http://127.0.0.1:%1%2"_s.arg(QString::number(m_port), path);
    std::vector<std::future<void>> all;
    all.reserve(std::size_t(visitors));
    for (int visitor = 0; visitor < visitors; ++visitor)
        all.push_back(std::async(std::launch::async, [&address, times] {
            for (int i = 0; i < times; ++i) {
                const FetchedPage page = fetchPage(address, std::chrono::seconds(10));
                if (const auto *failure = std::get_if<FetchFailure>(&page))
                    throw std::runtime_error(failure->words.toStdString());
            }
        }));
    for (std::future<void> &visitor : all)
        visitor.get();
}
