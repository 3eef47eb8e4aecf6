#pragma once

#include "app/Database.h"

#include <QDeadlineTimer>
#include <QStringList>

/// Named locks of the database server: they exclude other counters, not statements. Taken in the order of their names,
/// given back on every way out; the server gives them back when the connection is lost.
class NamedLocks
{
public:
    /// Waits for all of them together until the end, to the second, then throws NotDone.
    NamedLocks(DbConnection &connection, QStringList names, const QDeadlineTimer &end);
    NamedLocks(const NamedLocks &) = delete;
    NamedLocks &operator=(const NamedLocks &) = delete;
    ~NamedLocks();

private:
    void release();

    DbConnection &m_connection;
    QStringList m_held;
};
