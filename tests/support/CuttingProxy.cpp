#include "support/CuttingProxy.h"

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#include <atomic>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype headerSize = 4;
constexpr char queryCommand = 0x03;

qsizetype packetSize(const QByteArray &packets)
{
    const auto byte = [&](qsizetype i) { return qsizetype(static_cast<unsigned char>(packets[i])); };
    return headerSize + (byte(0) | byte(1) << 8 | byte(2) << 16);
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

/// One connection of the program with its own to the server.
struct CuttingProxy::Link : QObject
{
    using QObject::QObject;

    QLocalSocket *client = nullptr;
    QLocalSocket *server = nullptr;
    QByteArray packets; ///< of the client, the last one perhaps incomplete
    bool isGreeted = false;
    bool isHeld = false;
    bool losesAnswer = false;
    bool isCut = false;
};

CuttingProxy::CuttingProxy(const PrivateServer &server)
    : m_serverPath(server.socketPath()), m_listening(new QLocalServer)
{
    static std::atomic<int> count = 0;
    m_path = m_serverPath + u"-proxy-"_s + QString::number(++count);
    if (!m_listening->listen(m_path))
        throw std::runtime_error("No socket at " + m_path.toStdString());
    m_listening->moveToThread(&m_thread);
    QObject::connect(m_listening, &QLocalServer::newConnection, m_listening, [this] { take(); });
    QObject::connect(&m_thread, &QThread::finished, m_listening, &QObject::deleteLater);
    m_thread.start();
}

CuttingProxy::~CuttingProxy()
{
    m_thread.quit();
    m_thread.wait();
}

QString CuttingProxy::connectionString() const
{
    return u"SERVER="_s + m_path + u";DATABASE=posdb;UID=counter;PWD=;OPTION=16427"_s;
}

void CuttingProxy::run(const std::function<void()> &step) const
{
    QMetaObject::invokeMethod(m_listening, step, Qt::BlockingQueuedConnection);
}

void CuttingProxy::set(const Weather &weather)
{
    run([&] {
        m_weather = weather;
        forwardAll();
    });
}

bool CuttingProxy::waitUntilHeld()
{
    bool isHolding = false;
    for (const QDeadlineTimer end(20'000); !isHolding && !end.hasExpired(); QThread::msleep(2))
        run([&] { isHolding = m_weather.isHolding; });
    return isHolding;
}

void CuttingProxy::letGo()
{
    run([this] {
        m_weather.isHolding = false;
        forwardAll();
    });
}

QStringList CuttingProxy::statements() const
{
    QStringList statements;
    run([&] { statements = m_weather.statements; });
    return statements;
}

void CuttingProxy::take()
{
    auto *link = new Link(m_listening);
    link->client = m_listening->nextPendingConnection();
    link->server = new QLocalSocket;
    for (QLocalSocket *socket : {link->client, link->server}) {
        socket->setParent(link);
        QObject::connect(socket, &QLocalSocket::disconnected, link, [link] { cut(*link); });
    }
    QObject::connect(link->client, &QLocalSocket::readyRead, link, [this, link] { fromClient(*link); });
    QObject::connect(link->server, &QLocalSocket::readyRead, link, [this, link] { fromServer(*link); });
    if (!m_weather.isGone)
        link->server->connectToServer(m_serverPath);
    if (link->server->state() != QLocalSocket::ConnectedState)
        cut(*link);
}

void CuttingProxy::cut(Link &link)
{
    if (std::exchange(link.isCut, true))
        return;
    link.client->abort();
    link.server->abort();
    link.deleteLater();
}

void CuttingProxy::fromClient(Link &link)
{
    const QByteArray bytes = link.client->readAll();
    if (!m_weather.swallows)
        link.packets += bytes;
    forward(link);
}

void CuttingProxy::fromServer(Link &link)
{
    QByteArray bytes = link.server->readAll();
    if (link.losesAnswer)
        cut(link);
    if (link.isCut || m_weather.swallows)
        return;
    if (!std::exchange(link.isGreeted, true))
        bytes = plainGreeting(bytes);
    const auto give = [this, &link, bytes] {
        if (!m_weather.swallows && !link.isCut) {
            link.client->write(bytes);
            link.client->flush();
        }
    };
    if (m_weather.delay.count() > 0)
        QTimer::singleShot(m_weather.delay, Qt::PreciseTimer, &link, give);
    else
        give();
}

void CuttingProxy::forwardAll()
{
    for (QObject *link : m_listening->children())
        if (auto *own = dynamic_cast<Link *>(link))
            forward(*own);
}

// Passes on the packets that are whole.
void CuttingProxy::forward(Link &link)
{
    while (!link.isCut && !(link.isHeld && m_weather.isHolding) && link.packets.size() >= headerSize &&
           link.packets.size() >= packetSize(link.packets)) {
        const QByteArray packet = link.packets.left(packetSize(link.packets));
        if (!std::exchange(link.isHeld, false) && !look(link, packet))
            return;
        link.packets.remove(0, packet.size());
        link.server->write(packet);
        link.server->flush();
    }
}

// Looks at a packet before it goes on. Commands have the number 0; a password does not.
bool CuttingProxy::look(Link &link, const QByteArray &packet)
{
    Weather &weather = m_weather;
    if (packet[3] != 0 || packet.size() == headerSize)
        return true;
    const QString statement = QString::fromUtf8(packet.mid(headerSize + 1));
    if (packet[headerSize] != queryCommand || statement.startsWith(u"SET SESSION "_s))
        return true;
    weather.statements << statement;
    const Trap trap = weather.trap;
    if (trap == Trap::None ||
        (weather.number > 0 ? weather.statements.size() != weather.number : !statement.startsWith(weather.beginning)))
        return true;
    link.isHeld = weather.isHolding = trap == Trap::Hold;
    link.losesAnswer = trap == Trap::CutUnanswered;
    weather.isGone = weather.forGood;
    weather.trap = Trap::None;
    if (trap == Trap::CutUnsent)
        cut(link);
    return trap == Trap::CutUnanswered;
}
