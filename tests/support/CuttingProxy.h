#pragma once

#include "support/PrivateServer.h"

#include <QStringList>
#include <QThread>

#include <chrono>
#include <functional>

class QLocalServer;

/// Stands between a program and a test's server, on a unix socket of its own, and does what a bad network does, at a
/// moment that is exact: statements are told apart and counted. Connections are not compressed. The session's own
/// settings are no statements here.
class CuttingProxy
{
public:
    enum class Cut {
        Unsent,    ///< the connection is cut before the server hears of the statement
        Unanswered ///< the server carries the statement out, and the connection is cut before its answer
    };

    explicit CuttingProxy(const PrivateServer &server);
    ~CuttingProxy();
    CuttingProxy(const CuttingProxy &) = delete;
    CuttingProxy &operator=(const CuttingProxy &) = delete;

    [[nodiscard]] QString connectionString() const;

    /// Everything goes through again; what was held goes on, what was swallowed is lost. Counts begin anew.
    void pass() { set({}); }
    /// Cuts at the n-th statement from here, counted from 1.
    void cutAt(int number, Cut cut) { set({trapOf(cut), number}); }
    /// Cuts at the next statement that begins so. With `forGood` nobody can connect after that.
    void cutAt(const QString &beginning, Cut cut, bool forGood = false) { set({trapOf(cut), 0, beginning, forGood}); }
    /// Holds the next statement that begins so, and what follows on its connection, until letGo().
    void holdAt(const QString &beginning) { set({Trap::Hold, 0, beginning}); }
    /// False when nothing was held after some seconds.
    bool waitUntilHeld();
    void letGo();
    /// Lets everything vanish, in both directions; connections stay.
    void swallow() { set({.swallows = true}); }
    /// Gives every answer so much later.
    void delay(std::chrono::milliseconds time) { set({.delay = time}); }

    /// What was sent since the last change of the above, a statement that was cut or held among it.
    [[nodiscard]] QStringList statements() const;

private:
    /// What happens to the statement that is waited for.
    enum class Trap { None, CutUnsent, CutUnanswered, Hold };
    struct Weather
    {
        Trap trap = Trap::None;
        int number = 0;
        QString beginning = {};
        bool forGood = false;
        bool swallows = false;
        std::chrono::milliseconds delay = {};
        // Since it began:
        bool isGone = false;
        bool isHolding = false;
        QStringList statements = {};
    };
    struct Link;

    static Trap trapOf(Cut cut) { return cut == Cut::Unsent ? Trap::CutUnsent : Trap::CutUnanswered; }
    void set(const Weather &weather);
    /// Runs it in the proxy's own thread, to which all below and all sockets belong.
    void run(const std::function<void()> &step) const;
    void take();
    static void cut(Link &link);
    void fromClient(Link &link);
    void fromServer(Link &link);
    void forward(Link &link);
    void forwardAll();
    /// False when the packet does not go on now.
    bool look(Link &link, const QByteArray &packet);

    QString m_path;
    QString m_serverPath;
    QThread m_thread;
    QLocalServer *m_listening; ///< its children are the links
    Weather m_weather;
};
