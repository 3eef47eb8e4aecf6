#pragma once

#include "app/SocketPoll.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <functional>

/// What the person at the counter sees of a wait for the database server. The window shows itself and keeps the others
/// from being used; without one a wait can only end by its time.
class WaitSign
{
public:
    WaitSign() = default;
    WaitSign(const WaitSign &) = delete;
    WaitSign &operator=(const WaitSign &) = delete;
    virtual ~WaitSign() = default;

    /// From now on what is pressed or typed reaches no other window; it is forgotten, not kept for later.
    virtual void hold() = 0;
    /// Says what is waited for, with a button that calls giveUp.
    virtual void show(const QString &what, const std::function<void()> &giveUp) = 0;
    /// The wait has ended.
    virtual void release() = 0;
};

/// Waits for the database server's answer in place, and keeps the windows alive meanwhile: a short wait is one call of
/// the system, a longer one runs the event loop, and one of half a second is told to the person.
class AnswerWait
{
public:
    enum class End { Ready, TimedOut, GivenUp };

    void setSign(WaitSign *sign) { m_sign = sign; }
    /// Another operation begins: its waits are added up from here. `what` is what the sign says.
    void begin(const QString &what);
    /// While a timer's own reads are waited for, the person's input is kept for afterwards and nothing is shown.
    void setQuiet(bool quiet) { m_quiet = quiet; }
    [[nodiscard]] bool isQuiet() const { return m_quiet; }

    [[nodiscard]] bool isWaiting() const { return m_waiting; }

    /// Waits until the socket is ready as wanted; `ready` then says for what.
    End wait(qintptr socket, SocketPoll::Ready wanted, SocketPoll::Ready &ready, const QDeadlineTimer &deadline);
    /// Runs the event loop until `done` says so, asked whenever something happened. For what comes without a socket.
    End waitUntil(const std::function<bool()> &done, const QDeadlineTimer &deadline);

private:
    [[nodiscard]] int millisecondsInPlace(const QDeadlineTimer &deadline);
    End runLoop(qintptr socket, SocketPoll::Ready wanted, const std::function<bool()> &done,
                const QDeadlineTimer &deadline);

    WaitSign *m_sign = nullptr;
    bool m_quiet = false;
    bool m_waiting = false;
    QString m_what;
    qint64 m_waited = 0;  ///< milliseconds of this operation
    QElapsedTimer m_away; ///< since the event loop ran last, as far as waits know; invalid after it ran
    QObject m_turn;
};
