#include "app/Operation.h"

#include "app/Errors.h"
#include "app/NamedLocks.h"
#include "app/SqlText.h"
#include "app/Station.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRepeats = 3;
constexpr int longestWait = 5000; // milliseconds for other counters
constexpr int mostLooks = 10;
constexpr int betweenLooks = 500; // milliseconds

} // namespace

Operation::Operation(Station &station, QString words, QStringList locks)
    : m_station(station), m_words(std::move(words)), m_locks(std::move(locks))
{
}

bool Operation::run(const std::function<bool()> &work)
{
    const QDeadlineTimer end(longestWait);
    for (int repeat = 0; repeat <= mostRepeats && (repeat == 0 || !end.hasExpired()); ++repeat) {
        const Attempt result = attempt(work, end);
        if (result != Attempt::Conflict)
            return result == Attempt::Done;
    }
    throw NotDone(u"Another counter is changing the same just now. Nothing was written; please try again."_s);
}

Operation::Attempt Operation::attempt(const std::function<bool()> &work, const QDeadlineTimer &end)
{
    m_proof.clear();
    m_connection.emplace(m_station.database, m_words.isEmpty() ? QString() : m_words + u" waits for the database …"_s);
    const NamedLocks locks(*m_connection, m_locks, end);
    try {
        m_connection->execute(u"START TRANSACTION"_s);
        if (!work()) {
            rollBack();
            return Attempt::Undone;
        }
        commit();
        return Attempt::Done;
    } catch (const DbError &error) {
        rollBack();
        if (!error.isConflict())
            throw;
        return Attempt::Conflict;
    } catch (...) {
        rollBack();
        throw;
    }
}

// A commit that failed for any other reason than a conflict may have come through all the same.
void Operation::commit()
{
    try {
        m_connection->execute(u"COMMIT"_s);
    } catch (const DbError &error) {
        if (error.isConflict())
            throw;
        m_connection->drop();
        lookWhetherItStands(error);
    }
}

void Operation::rollBack()
{
    try {
        m_connection->execute(u"ROLLBACK"_s);
    } catch (const std::exception &) {
        m_connection->drop(); // the server rolls back when it loses the connection
    }
}

void Operation::insertProof(const QString &statement, const QString &table, const QString &idColumn,
                            const QString &sameRow)
{
    m_connection->execute(statement);
    m_proof = sql(u"SELECT %1 FROM %2 WHERE %1=%3 AND %4 LOCK IN SHARE MODE"_s, idColumn, table,
                  m_connection->insertId(), sameRow);
}

// The row is asked for with a lock: where the old connection's transaction is still open on the server, the look waits
// for its end.
void Operation::lookWhetherItStands(const DbError &lost)
{
    const QString what = m_words + u": looking whether it was recorded …"_s;
    for (int look = 0; look < mostLooks && !m_proof.isEmpty(); ++look) {
        try {
            DbConnection connection(m_station.database, what);
            if (connection.query(m_proof).size() == 0)
                throw NotDone(m_words +
                              u" was not recorded: the connection to the database was lost. Please try again."_s);
            m_station.prompts.inform(m_words + u" was recorded"_s +
                                     (m_recordedAs.isEmpty() ? QString() : u' ' + m_recordedAs) +
                                     u", although the database's answer was lost."_s);
            return;
        } catch (const GivenUp &) {
            break;
        } catch (const DbError &) {
            if (!m_station.database.pause(betweenLooks, what))
                break;
        }
    }
    throw NotDone(m_words +
                  u" was sent to the database, but the answer was lost and the database cannot be asked. "
                  u"Please look whether it stands there before you try again.\n("_s +
                  QString::fromUtf8(lost.what()) + u')');
}
