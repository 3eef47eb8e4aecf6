#include "reportserver/ReportServer.h"

#include "app/Database.h"
#include "reportserver/Html.h"
#include "reportserver/ReportPages.h"

#include <httplib.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t threads = 6;
constexpr int patienceSeconds = 5;
constexpr std::size_t longestBody = 1024; // nobody sends one
constexpr auto html = "text/html; charset=utf-8";

bool isLoopback(const std::string &address)
{
    return address == "127.0.0.1" || address == "::1" || address == "localhost";
}

// "[::1]:8088", "localhost:8088"
std::string hostOf(const std::string &header)
{
    if (header.starts_with('['))
        return header.substr(1, header.find(']') - 1);
    return header.substr(0, header.find(':'));
}

ReportRequest requestFrom(const httplib::Request &given)
{
    ReportRequest request{QString::fromStdString(given.path)};
    request.parameters.reserve(given.params.size());
    for (const auto &[name, value] : given.params)
        request.parameters.emplace_back(QString::fromStdString(name), QString::fromStdString(value));
    return request;
}

void give(httplib::Response &response, const ReportAnswer &answer)
{
    response.status = answer.status;
    response.set_content(answer.html.constData(), std::size_t(answer.html.size()), html);
}

} // namespace

class ReportServer::Private
{
public:
    Private(ReportSettings reportSettings, std::function<QDateTime()> now)
        : settings(std::move(reportSettings)), clock(std::move(now))
    {
        // Every answer closes its connection: a page is one answer, and no idle browser holds a thread.
        server.set_keep_alive_max_count(1);
        server.set_read_timeout(patienceSeconds);
        server.set_write_timeout(patienceSeconds);
        server.set_payload_max_length(longestBody);
        server.new_task_queue = [] { return new httplib::ThreadPool(threads); };
        // Two servers on one port would share its visitors without a word.
        server.set_socket_options([](auto socket) {
            const int yes = 1;
            setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, reinterpret_cast<const char *>(&yes), sizeof yes);
        });
        server.set_default_headers(headers());
        // Before the library looks for a page by patterns, which a long address can keep busy.
        server.set_pre_routing_handler([this](const httplib::Request &request, httplib::Response &response) {
            if (!refuse(request, response))
                answer(request, response);
            return httplib::Server::HandlerResponse::Handled;
        });
        server.set_error_handler([](const httplib::Request & /*request*/, httplib::Response &response) {
            if (response.body.empty())
                give(response,
                     plainAnswer(response.status, u"This cannot be answered"_s, u"The request was not understood."_s));
        });
    }

    ReportSettings settings;
    std::function<QDateTime()> clock;
    httplib::Server server;

private:
    static httplib::Headers headers()
    {
        const std::string policy = "default-src 'none'; style-src " + Html::styleSource().toStdString() +
                                   "; form-action 'self'; base-uri 'none'; frame-ancestors 'none'";
        return {{"Content-Security-Policy", policy},
                {"X-Content-Type-Options", "nosniff"},
                {"X-Frame-Options", "DENY"},
                {"Referrer-Policy", "no-referrer"},
                {"Cross-Origin-Resource-Policy", "same-origin"},
                {"Cache-Control", "no-store"}};
    }

    // A page of elsewhere may lead its own name to this machine's loopback; it does not get to read reports that way.
    bool refuse(const httplib::Request &request, httplib::Response &response) const
    {
        if (request.method != "GET" && request.method != "HEAD") {
            response.set_header("Allow", "GET, HEAD");
            give(response, plainAnswer(405, u"This cannot be done"_s, u"Reports can only be read."_s));
            return true;
        }
        if (isLoopback(settings.listenAddress.toStdString()) && !isLoopback(hostOf(request.get_header_value("Host")))) {
            give(response, plainAnswer(421, u"This is another server"_s,
                                       u"Reports of this computer are shown to this computer only."_s));
            return true;
        }
        return false;
    }

    void answer(const httplib::Request &request, httplib::Response &response) const
    {
        thread_local std::unique_ptr<Database> database; // each thread belongs to one server
        if (!database)
            database = std::make_unique<Database>(settings.centre.ConnectionString);
        QString failed;
        give(response, answerReport(settings, *database, clock(), requestFrom(request), &failed));
        if (!failed.isEmpty())
            std::fprintf(stderr, "%s\n", qPrintable(failed));
    }
};

ReportServer::ReportServer(ReportSettings settings, std::function<QDateTime()> clock)
    : d(std::make_unique<Private>(std::move(settings), std::move(clock)))
{
}

ReportServer::~ReportServer() = default;

int ReportServer::bind()
{
    const std::string address = d->settings.listenAddress.toStdString();
    if (d->settings.port == 0)
        return std::max(0, d->server.bind_to_any_port(address));
    return d->server.bind_to_port(address, d->settings.port) ? d->settings.port : 0;
}

void ReportServer::serve()
{
    d->server.listen_after_bind();
}

void ReportServer::stop()
{
    d->server.stop();
}
