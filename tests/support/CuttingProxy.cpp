#include "support/CuttingProxy.h"

#include <QFile>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int turn = 5; // milliseconds
constexpr qsizetype headerSize = 4;
constexpr char queryCommand = 0x03;
constexpr char pingCommand = 0x0e;

int unixSocket(const QString &path, bool listening)
{
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = path.toLocal8Bit();
    if (std::size_t(name.size()) >= sizeof address.sun_path)
        throw std::runtime_error("Too long for a socket: " + path.toStdString());
    std::memcpy(address.sun_path, name.constData(), std::size_t(name.size()));
    const auto *const general = reinterpret_cast<const sockaddr *>(&address);
    constexpr int backlog = 16;
    const bool done = listening ? bind(socket, general, sizeof address) == 0 && listen(socket, backlog) == 0
                                : connect(socket, general, sizeof address) == 0;
    if (done)
        return socket;
    close(socket);
    return -1;
}

bool sendAll(int socket, const QByteArray &bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const auto step = send(socket, bytes.constData() + sent, std::size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (step <= 0)
            return false;
        sent += step;
    }
    return true;
}

/// Empty when the other side has closed.
QByteArray receive(int socket)
{
    std::array<char, 65536> buffer{};
    const auto size = recv(socket, buffer.data(), buffer.size(), 0);
    return size > 0 ? QByteArray(buffer.data(), qsizetype(size)) : QByteArray();
}

qsizetype payloadSize(const QByteArray &packets)
{
    const auto byte = [&](qsizetype i) { return qsizetype(static_cast<unsigned char>(packets[i])); };
    return byte(0) | byte(1) << 8 | byte(2) << 16;
}

/// The server's greeting, but for its offer to compress.
QByteArray plainGreeting(QByteArray packet)
{
    constexpr qsizetype versionToFlags = 14; // its end, the connection's number, the scramble and a filler
    constexpr char compress = 0x20;
    const qsizetype flags = packet.indexOf('\0', headerSize + 1) + versionToFlags;
    if (flags < packet.size())
        packet[flags] = char(packet[flags] & ~compress);
    return packet;
}

} // namespace

CuttingProxy::CuttingProxy(const PrivateServer &server) : m_serverPath(server.socketPath())
{
    static std::atomic<int> count = 0;
    m_path = m_serverPath + u"-proxy-"_s + QString::number(++count);
    m_listening = unixSocket(m_path, true);
    if (m_listening < 0)
        throw std::runtime_error("No socket at " + m_path.toStdString());
    m_thread = std::thread([this] { serve(); });
}

CuttingProxy::~CuttingProxy()
{
    m_ends = true;
    m_thread.join();
    close(m_listening);
    QFile::remove(m_path);
}

QString CuttingProxy::connectionString() const
{
    return u"SERVER="_s + m_path + u";DATABASE=posdb;UID=counter;PWD=;OPTION=16427"_s;
}

void CuttingProxy::reset()
{
    m_trap = Trap::None;
    m_isGone = false;
    m_isHolding = false;
    m_swallowFrom = Clock::time_point::max();
    m_delay = {};
    m_statements.clear();
    m_pings = 0;
}

void CuttingProxy::set(Trap trap, int number, const QString &beginning, bool forGood)
{
    const std::scoped_lock lock(m_mutex);
    reset();
    m_trap = trap;
    m_number = number;
    m_beginning = beginning;
    m_forGood = forGood;
}

void CuttingProxy::pass()
{
    set(Trap::None, 0, {}, false);
}

void CuttingProxy::cutAt(int number, Cut cut, bool forGood)
{
    set(cut == Cut::Unsent ? Trap::CutUnsent : Trap::CutUnanswered, number, {}, forGood);
}

void CuttingProxy::cutAt(const QString &beginning, Cut cut, bool forGood)
{
    set(cut == Cut::Unsent ? Trap::CutUnsent : Trap::CutUnanswered, 0, beginning, forGood);
}

void CuttingProxy::holdAt(const QString &beginning)
{
    set(Trap::Hold, 0, beginning, false);
}

bool CuttingProxy::waitUntilHeld()
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::seconds(20), [this] { return m_isHolding; });
}

void CuttingProxy::letGo()
{
    const std::scoped_lock lock(m_mutex);
    m_isHolding = false;
}

void CuttingProxy::swallow(std::chrono::milliseconds after)
{
    const std::scoped_lock lock(m_mutex);
    reset();
    m_swallowFrom = Clock::now() + after;
}

void CuttingProxy::delay(std::chrono::milliseconds time)
{
    const std::scoped_lock lock(m_mutex);
    reset();
    m_delay = time;
}

QStringList CuttingProxy::statements() const
{
    const std::scoped_lock lock(m_mutex);
    return m_statements;
}

int CuttingProxy::pings() const
{
    const std::scoped_lock lock(m_mutex);
    return m_pings;
}

void CuttingProxy::serve()
{
    while (!m_ends) {
        std::vector<pollfd> sockets{{m_listening, POLLIN, 0}};
        for (const Link &link : m_links) {
            sockets.push_back({link.client, POLLIN, 0});
            sockets.push_back({link.server, POLLIN, 0});
        }
        poll(sockets.data(), sockets.size(), turn);
        const std::scoped_lock lock(m_mutex);
        for (std::size_t i = 0; i < m_links.size(); ++i) {
            Link &link = m_links[i];
            if (sockets[2 * i + 1].revents != 0)
                fromClient(link);
            if (!link.isCut && sockets[2 * i + 2].revents != 0)
                fromServer(link);
            if (!link.isCut)
                forward(link);
            if (!link.isCut)
                giveAnswers(link);
        }
        std::erase_if(m_links, [](const Link &link) {
            if (link.isCut) {
                close(link.client);
                close(link.server);
            }
            return link.isCut;
        });
        if (sockets[0].revents != 0)
            take();
    }
    for (const Link &link : m_links) {
        close(link.client);
        close(link.server);
    }
}

void CuttingProxy::take()
{
    Link link;
    link.client = accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC);
    link.server = m_isGone ? -1 : unixSocket(m_serverPath, false);
    if (link.server >= 0)
        m_links.push_back(link);
    else
        close(link.client);
}

void CuttingProxy::fromClient(Link &link)
{
    const QByteArray bytes = receive(link.client);
    if (bytes.isEmpty())
        link.isCut = true;
    else if (!vanishes())
        link.packets += bytes;
}

void CuttingProxy::fromServer(Link &link)
{
    const QByteArray bytes = receive(link.server);
    if (bytes.isEmpty() || link.losesAnswer)
        link.isCut = true;
    else if (!vanishes())
        link.answers.push_back(
            {Clock::now() + m_delay, std::exchange(link.isGreeted, true) ? bytes : plainGreeting(bytes)});
}

// Passes on the packets that are whole.
void CuttingProxy::forward(Link &link)
{
    if (link.isHeld && m_isHolding)
        return;
    while (!link.isCut && link.packets.size() >= headerSize) {
        const qsizetype size = headerSize + payloadSize(link.packets);
        if (link.packets.size() < size)
            return;
        const QByteArray packet = link.packets.left(size);
        if (!link.isHeld)
            command(link, packet);
        if (link.isCut || (link.isHeld && m_isHolding))
            return;
        link.isHeld = false;
        link.packets.remove(0, size);
        if (!sendAll(link.server, packet))
            link.isCut = true;
    }
}

// Looks at a packet before it goes on. Commands have the number 0; a password does not.
void CuttingProxy::command(Link &link, const QByteArray &packet)
{
    if (packet[3] != 0 || packet.size() == headerSize)
        return;
    if (packet[headerSize] == pingCommand)
        ++m_pings;
    const QString statement = QString::fromUtf8(packet.mid(headerSize + 1));
    if (packet[headerSize] != queryCommand || statement.startsWith(u"SET SESSION "_s))
        return;
    m_statements << statement;
    if (m_trap == Trap::None || (m_number > 0 ? m_statements.size() != m_number : !statement.startsWith(m_beginning)))
        return;
    link.isHeld = m_isHolding = m_trap == Trap::Hold;
    link.isCut = m_trap == Trap::CutUnsent;
    link.losesAnswer = m_trap == Trap::CutUnanswered;
    m_isGone = m_forGood;
    m_trap = Trap::None;
    m_changed.notify_all();
}

void CuttingProxy::giveAnswers(Link &link)
{
    while (!link.answers.empty() && Clock::now() >= link.answers.front().due) {
        if (!vanishes() && !sendAll(link.client, link.answers.front().bytes))
            link.isCut = true;
        link.answers.erase(link.answers.begin());
    }
}
