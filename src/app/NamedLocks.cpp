#include "app/NamedLocks.h"

#include "app/Errors.h"
#include "app/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 second = 1000; // milliseconds

} // namespace

NamedLocks::NamedLocks(DbConnection &connection, QStringList names, const QDeadlineTimer &end)
    : m_connection(connection)
{
    std::sort(names.begin(), names.end());
    names.removeDuplicates();
    for (const QString &name : std::as_const(names)) {
        const qint64 seconds = (end.remainingTime() + second - 1) / second;
        bool taken = false;
        try {
            DbRows rows = m_connection.query(sql(u"SELECT GET_LOCK('%1', %2) AS taken"_s, quoted(name), seconds));
            taken = rows.next() && rows.number("taken") == 1;
        } catch (const DbError &error) {
            release();
            if (!error.isConflict())
                throw;
        }
        if (!taken) {
            release();
            throw NotDone(u"Another counter is changing the same just now. Nothing was written; please try again."_s);
        }
        m_held.prepend(name);
    }
}

NamedLocks::~NamedLocks()
{
    release();
}

void NamedLocks::release()
{
    try {
        for (const QString &name : std::as_const(m_held))
            static_cast<void>(m_connection.query(sql(u"SELECT RELEASE_LOCK('%1')"_s, quoted(name))));
    } catch (const std::exception &) {
        m_connection.drop(); // with the connection the server gives them back
    }
    m_held.clear();
}
