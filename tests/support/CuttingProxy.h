#pragma once

#include "support/PrivateServer.h"

#include <QStringList>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

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
    void pass();
    /// Cuts at the n-th statement from here, counted from 1. With `forGood` nobody can connect after that.
    void cutAt(int number, Cut cut, bool forGood = false);
    /// Cuts at the next statement that begins so.
    void cutAt(const QString &beginning, Cut cut, bool forGood = false);
    /// Holds the next statement that begins so, and what follows on its connection, until letGo().
    void holdAt(const QString &beginning);
    /// False when nothing was held after some seconds.
    bool waitUntilHeld();
    void letGo();
    /// Lets everything vanish after this time, in both directions; connections stay.
    void swallow(std::chrono::milliseconds after = {});
    /// Gives every answer so much later.
    void delay(std::chrono::milliseconds time);

    /// What was sent since the last change of the above, a statement that was cut or held among it.
    [[nodiscard]] QStringList statements() const;
    /// How often the program asked since then whether the connection lives.
    [[nodiscard]] int pings() const;

private:
    using Clock = std::chrono::steady_clock;
    struct Held
    {
        Clock::time_point due;
        QByteArray bytes;
    };
    struct Link
    {
        int client = -1;
        int server = -1;
        QByteArray packets = {}; ///< of the client, the last one perhaps incomplete
        std::vector<Held> answers = {};
        bool isGreeted = false;
        bool isHeld = false;
        bool losesAnswer = false;
        bool isCut = false;
    };
    /// What happens to the statement that is waited for.
    enum class Trap { None, CutUnsent, CutUnanswered, Hold };

    void set(Trap trap, int number, const QString &beginning, bool forGood);
    void reset();
    void serve();
    void take();
    void fromClient(Link &link);
    void fromServer(Link &link);
    void forward(Link &link);
    void command(Link &link, const QByteArray &packet);
    void giveAnswers(Link &link);
    [[nodiscard]] bool vanishes() const { return Clock::now() >= m_swallowFrom; }

    QString m_path;
    QString m_serverPath;
    int m_listening = -1;
    std::vector<Link> m_links; ///< the thread's own

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Trap m_trap = Trap::None;
    int m_number = 0;
    QString m_beginning;
    bool m_forGood = false;
    bool m_isGone = false;
    bool m_isHolding = false;
    Clock::time_point m_swallowFrom = Clock::time_point::max();
    std::chrono::milliseconds m_delay{};
    QStringList m_statements;
    int m_pings = 0;

    std::atomic<bool> m_ends = false;
    std::thread m_thread;
};
