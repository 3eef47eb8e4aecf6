#include "app/AnswerWait.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace {

constexpr qint64 longestInPlace = 100; // milliseconds that the event loop may be away
constexpr qint64 heldAfter = 400;      // what is typed before is kept for afterwards
constexpr qint64 toldAfter = 500;
constexpr int asked = 10;

int clamped(qint64 milliseconds)
{
    return int(std::clamp<qint64>(milliseconds, 0, 60'000));
}

} // namespace

void AnswerWait::begin(const QString &what)
{
    m_what = what;
    m_waited = 0;
}

int AnswerWait::millisecondsInPlace(const QDeadlineTimer &deadline)
{
    if (!QCoreApplication::instance())
        return clamped(deadline.remainingTime());
    if (!m_away.isValid()) {
        m_away.start();
        QMetaObject::invokeMethod(
            &m_turn, [this] { m_away.invalidate(); }, Qt::QueuedConnection);
    }
    return clamped(std::min(longestInPlace - m_away.elapsed(), deadline.remainingTime()));
}

AnswerWait::End AnswerWait::wait(qintptr socket, SocketPoll::Ready wanted, SocketPoll::Ready &ready,
                                 const QDeadlineTimer &deadline)
{
    ready = SocketPoll::waitFor(socket, wanted, millisecondsInPlace(deadline));
    const auto isReady = [&] { return ready.toRead || ready.toWrite; };
    if (isReady())
        return End::Ready;
    if (!QCoreApplication::instance())
        return End::TimedOut;
    return runLoop(
        socket, wanted,
        [&] {
            ready = SocketPoll::waitFor(socket, wanted, 0);
            return isReady();
        },
        deadline);
}

AnswerWait::End AnswerWait::waitUntil(const std::function<bool()> &done, const QDeadlineTimer &deadline)
{
    return runLoop(-1, {}, done, deadline);
}

AnswerWait::End AnswerWait::runLoop(qintptr socket, SocketPoll::Ready wanted, const std::function<bool()> &done,
                                    const QDeadlineTimer &deadline)
{
    const QScopedValueRollback<bool> waiting(m_waiting, true);
    QElapsedTimer here;
    here.start();
    QEventLoop loop;
    bool givenUp = false;
    const auto giveUp = [&] {
        givenUp = true;
        loop.quit();
    };
    std::unique_ptr<QSocketNotifier> read;
    std::unique_ptr<QSocketNotifier> write;
    const auto watch = [&](std::unique_ptr<QSocketNotifier> &notifier, QSocketNotifier::Type type) {
        notifier = std::make_unique<QSocketNotifier>(socket, type);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    };
    if (wanted.toRead)
        watch(read, QSocketNotifier::Read);
    if (wanted.toWrite)
        watch(write, QSocketNotifier::Write);
    QTimer asking;
    if (socket < 0) {
        QObject::connect(&asking, &QTimer::timeout, &loop, &QEventLoop::quit);
        asking.start(asked);
    }
    QTimer ending;
    ending.setSingleShot(true);
    QObject::connect(&ending, &QTimer::timeout, &loop, &QEventLoop::quit);
    QTimer telling;
    telling.setSingleShot(true);
    WaitSign *const sign = m_quiet ? nullptr : m_sign;
    const auto released = qScopeGuard([sign] {
        if (sign)
            sign->release();
    });
    if (sign) {
        sign->hold();
        QObject::connect(&telling, &QTimer::timeout, &loop, [&] { sign->show(m_what, giveUp); });
        telling.start(clamped(toldAfter - m_waited));
    }
    End end = End::Ready;
    while (!done()) {
        if (givenUp || QCoreApplication::closingDown()) {
            end = End::GivenUp;
            break;
        }
        if (deadline.hasExpired()) {
            end = End::TimedOut;
            break;
        }
        ending.start(clamped(deadline.remainingTime()));
        if (loop.exec(m_quiet ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents) !=
            0) // the application ends
            givenUp = true;
    }
    m_waited += here.elapsed();
    m_away.invalidate();
    return end;
}
