#include "reports/PageFetch.h"

#include <QByteArrayList>

#include <asio.hpp>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype largestPage = qsizetype(16) << 20U;

struct Address
{
    std::string host;
    std::string port = "80";
    std::string authority; ///< host and port as they stand in the address
    std::string path = "/";
};

std::optional<Address> addressFrom(const QString &text)
{
    const QString scheme = u"http://"_s;
    if (!text.startsWith(scheme))
        return std::nullopt;
    const QString rest = text.mid(scheme.size());
    const qsizetype slash = rest.indexOf(u'/');
    const QString authority = rest.left(slash);
    Address address;
    address.authority = authority.toStdString();
    if (slash >= 0)
        address.path = rest.mid(slash).toStdString();
    const qsizetype colon = authority.lastIndexOf(u':');
    const bool hasPort = colon > authority.lastIndexOf(u']'); // "[::1]" has colons of its own
    if (hasPort)
        address.port = authority.mid(colon + 1).toStdString();
    QString host = hasPort ? authority.left(colon) : authority;
    address.host = host.remove(u'[').remove(u']').toStdString();
    // A blank or a line feed would say something else to the server than to a person.
    const bool isPlain = std::all_of(rest.begin(), rest.end(), [](QChar c) { return c > u' ' && c < u'\x7f'; });
    return address.host.empty() || !isPlain ? std::nullopt : std::optional(address);
}

/// One exchange: every step is given what is left of the time.
class Exchange
{
public:
    explicit Exchange(std::chrono::milliseconds patience) : m_end(std::chrono::steady_clock::now() + patience) {}

    QByteArray get(const Address &address)
    {
        asio::ip::tcp::resolver resolver(m_context);
        const auto found = resolver.resolve(address.host, address.port);
        await([&](auto done) { asio::async_connect(m_socket, found, done); });
        // The old form of the protocol: the answer ends with the connection.
        const std::string request = "GET " + address.path + " HTTP/1.0\r\nHost: " + address.authority +
                                    "\r\nAccept: text/html\r\nConnection: close\r\n\r\n";
        await([&](auto done) { asio::async_write(m_socket, asio::buffer(request), done); });
        std::string answer;
        const auto ended = await(
            [&](auto done) {
                asio::async_read(m_socket, asio::dynamic_buffer(answer, std::size_t(largestPage)), done);
            },
            asio::error::eof);
        if (ended != asio::error::eof)
            throw std::runtime_error("the page is too large");
        return QByteArray::fromStdString(answer);
    }

private:
    template <typename Start>
    asio::error_code await(Start start, asio::error_code expected = {})
    {
        asio::error_code outcome;
        bool isDone = false;
        start([&](asio::error_code error, const auto & /*what*/) {
            outcome = error;
            isDone = true;
        });
        m_context.restart();
        m_context.run_until(m_end);
        if (!isDone) {
            m_socket.close();
            m_context.run(); // the step ends with an error, while what it uses still stands
            throw std::runtime_error("no answer came in time");
        }
        if (outcome && outcome != expected)
            throw std::system_error(outcome);
        return outcome;
    }

    std::chrono::steady_clock::time_point m_end;
    asio::io_context m_context;
    asio::ip::tcp::socket m_socket{m_context};
};

/// The page of an answer. Throws when the answer is another one, or was cut off.
QByteArray bodyOf(const QByteArray &answer)
{
    const qsizetype headEnd = answer.indexOf("\r\n\r\n");
    const QByteArrayList lines = answer.left(headEnd).split('\n');
    const QByteArrayList status = lines.front().simplified().split(' ');
    if (headEnd < 0 || !status.front().startsWith("HTTP/"))
        throw std::runtime_error("the answer is no web page");
    if (status.value(1) != "200")
        throw std::runtime_error("the report server answered " + status.mid(1).join(' ').toStdString());
    QByteArray body = answer.mid(headEnd + 4);
    for (const QByteArray &line : lines)
        if (line.toLower().startsWith("content-length:") && line.mid(15).trimmed().toLongLong() != body.size())
            throw std::runtime_error("the answer was cut off");
    return body;
}

} // namespace

FetchedPage fetchPage(const QString &address, std::chrono::milliseconds patience)
{
    const auto known = addressFrom(address);
    if (!known)
        return FetchFailure{u"\"%1\" is no address of a web page."_s.arg(address)};
    try {
        return bodyOf(Exchange(patience).get(*known));
    } catch (const std::exception &error) {
        return FetchFailure{u"The report server at %1 cannot be asked: %2."_s.arg(
            QString::fromStdString(known->authority), QString::fromLocal8Bit(error.what()))};
    }
}
