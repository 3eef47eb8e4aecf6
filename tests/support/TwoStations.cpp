#include "support/TwoStations.h"

#include "support/CuttingProxy.h"
#include "support/TestStation.h"

#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A station on a thread of its own.
class StationThread
{
public:
    StationThread(const QString &connectionString, int counter, const StationDeed &deed)
        : m_thread(QThread::create([=, this] {
              ScriptedPrompts nobody;
              Station station(testSettings(connectionString, counter), nobody);
              try {
                  m_words = deed(station);
              } catch (const std::exception &error) {
                  m_words = QString::fromUtf8(error.what());
              }
          }))
    {
        m_thread->start();
    }
    StationThread(const StationThread &) = delete;
    StationThread &operator=(const StationThread &) = delete;
    ~StationThread() { m_thread->wait(); }

    [[nodiscard]] bool isFinished() const { return m_thread->isFinished(); }
    QString words()
    {
        m_thread->wait();
        return m_words;
    }

private:
    QString m_words;
    std::unique_ptr<QThread> m_thread;
};

} // namespace

QStringList raceOfTwo(const PrivateServer &server, const QString &held, const StationDeed &first,
                      const StationDeed &second)
{
    CuttingProxy proxy(server);
    proxy.holdAt(held);
    StationThread one(proxy.connectionString(), 1, first);
    if (!proxy.waitUntilHeld())
        return {u"The first station was never held"_s};
    StationThread other(server.connectionString(), 2, second);
    const QString waiting = u"SELECT 1 FROM information_schema.global_status WHERE "
                            "variable_name='INNODB_ROW_LOCK_CURRENT_WAITS' AND variable_value>0"_s;
    while (!other.isFinished() && server.rows(waiting).isEmpty())
        QThread::msleep(5);
    proxy.letGo();
    return {one.words(), other.words()};
}
