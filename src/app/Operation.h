#pragma once

#include "app/Database.h"

#include <QStringList>

#include <functional>
#include <optional>

struct Station;

/// One operation on the tables: it is whole or it is not there. Its statements stand in one transaction; what other
/// counters must not touch meanwhile is held by named locks, which are taken before the transaction begins.
///
/// Deadlocks and lock time-outs are tried again, at most three times. Who waits for another counter for five seconds
/// gets NotDone. When the answer to the commit is lost, run() looks whether the work stands: staff are told that it was
/// recorded, or NotDone says that it was not, or that nobody can know yet. Everything else that fails throws DbError
/// and leaves nothing.
class Operation
{
public:
    /// `words` name the operation for the messages: "The booking of Court 1, 20:00". Locks are taken in their order.
    Operation(Station &station, QString words, QStringList locks = {});

    /// Carries the work out and commits it when it gives true; false leaves nothing. The work may be called again.
    bool run(const std::function<bool()> &work);

    qint64 execute(const QString &sql) { return m_connection->execute(sql); }
    [[nodiscard]] DbRows query(const QString &sql) { return m_connection->query(sql); }
    /// Like execute(), for an INSERT whose row proves afterwards that the operation stands. `table` has the
    /// auto-increment column `idColumn`; a server that went down hard may give the number to another row, so `sameRow`
    /// is a condition that tells them apart.
    void insertProof(const QString &sql, const QString &table, const QString &idColumn, const QString &sameRow);
    /// The number that the last INSERT got from the database.
    [[nodiscard]] quint64 insertId() const { return m_connection->insertId(); }
    /// What is told after a lost answer: "was recorded" and then "as transaction 7".
    void setRecordedAs(const QString &words) { m_recordedAs = words; }
    /// A query, with a lock, that gives a row when the operation stands; for one that inserts nothing.
    void proveBy(const QString &query) { m_proof = query; }

private:
    enum class Attempt { Done, Undone, Conflict };

    Attempt attempt(const std::function<bool()> &work, const QDeadlineTimer &end);
    void commit();
    void rollBack();
    void lookWhetherItStands(const DbError &lost);

    Station &m_station;
    QString m_words;
    QString m_recordedAs;
    QStringList m_locks;
    std::optional<DbConnection> m_connection;
    QString m_proof; ///< a query that gives a row when the work stands
};
