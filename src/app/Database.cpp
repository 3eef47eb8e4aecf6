#include "app/Database.h"

#include "app/HostAddresses.h"

#include <errmsg.h>
#include <mysql.h>

#include <array>
#include <chrono>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr qint64 connectMilliseconds = 10000; // it takes several answers
constexpr qint64 answerMilliseconds = 15000;
constexpr qint64 pingMilliseconds = 2000;
constexpr qint64 quietMilliseconds = 1000;
constexpr qint64 quietAgainMilliseconds = 300; // while it is known not to answer
constexpr qint64 trustedMilliseconds = 5000;

// The option bits of the connection string that the client library knows; the others concern the driver's own cursors.
constexpr unsigned optionFoundRows = 2;
constexpr unsigned optionBigPackets = 8;
constexpr unsigned optionCompress = 2048;

constexpr std::array sessionSettings{
    // Numbers arrive as quoted text, an empty receipt number as '', texts between double quotes. Who waits longer than
    // a second for a row is told so. A counter that has vanished in the middle of an operation holds nothing for long.
    "SET SESSION sql_mode='', sql_auto_is_null=0, innodb_lock_wait_timeout=1, wait_timeout=120 "
    "/*M! , idle_transaction_timeout=8 */",
    "SET SESSION TRANSACTION ISOLATION LEVEL REPEATABLE READ",
};

SocketPoll::Ready wanted(int status)
{
    return {(status & MYSQL_WAIT_READ) != 0, (status & MYSQL_WAIT_WRITE) != 0};
}

int reached(SocketPoll::Ready ready)
{
    return (ready.toRead ? MYSQL_WAIT_READ : 0) | (ready.toWrite ? MYSQL_WAIT_WRITE : 0);
}

bool needsLookUp(const QString &server)
{
    return server != u"localhost" && !HostAddresses::isAddress(server);
}

} // namespace

ConnectionOptions ConnectionOptions::parse(const QString &connectionString)
{
    ConnectionOptions options;
    const auto pieces = connectionString.split(u';', Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        const QString key = piece.section(u'=', 0, 0).trimmed().toUpper();
        const QString value = piece.section(u'=', 1);
        if (key == u"SERVER")
            options.server = value;
        else if (key == u"DATABASE")
            options.database = value;
        else if (key == u"UID")
            options.user = value;
        else if (key == u"PWD")
            options.password = value;
        else if (key == u"OPTION")
            options.option = value.toUInt();
    }
    return options;
}

Database::Database(const QString &connectionString)
    : m_options(ConnectionOptions::parse(connectionString)), m_mysql(nullptr, &mysql_close)
{
}

QDeadlineTimer Database::deadline(qint64 milliseconds) const
{
    const QDeadlineTimer own(milliseconds);
    return own < m_quietEnd ? own : m_quietEnd;
}

template <typename Continue>
void Database::finish(int status, const QDeadlineTimer &deadline, const QString &sql, Continue go)
{
    auto end = AnswerWait::End::Ready;
    while (status != 0) {
        SocketPoll::Ready ready;
        end = m_wait.wait(mysql_get_socket(m_mysql.get()), wanted(status), ready, deadline);
        if (end != AnswerWait::End::Ready)
            break;
        status = go(reached(ready));
    }
    if (status == 0)
        return;
    // The library has to be told that its time is over before the connection can be closed.
    SocketPoll::shutDown(mysql_get_socket(m_mysql.get()));
    while (status != 0)
        status = go(MYSQL_WAIT_TIMEOUT);
    drop();
    if (end == AnswerWait::End::GivenUp)
        throw GivenUp(sql);
    throw DbError(u"The database server does not answer"_s, CR_SERVER_LOST, sql);
}

bool Database::pause(int milliseconds, const QString &what)
{
    m_wait.begin(what);
    return m_wait.waitUntil([] { return false; }, QDeadlineTimer(milliseconds)) == AnswerWait::End::TimedOut;
}

void Database::begin(const QString &what)
{
    if (m_wait.isWaiting())
        throw DatabaseBusy();
    m_wait.begin(what.isEmpty() ? u"Waiting for the answer of the database server …"_s : what);
    if (!m_mysql || !isAlive())
        open();
}

void Database::open()
{
    const QDeadlineTimer end = deadline(connectMilliseconds);
    mysql_library_init(0, nullptr, nullptr); // before any address: it readies the system's sockets
    const QString &server = m_options.server;
    if (server.startsWith(u'/') || !needsLookUp(server)) {
        connectTo(server, end);
        return;
    }
    const QStringList addresses = addressesOf(server, end);
    for (qsizetype i = 0; i < addresses.size(); ++i) {
        try {
            connectTo(addresses[i], end);
            return;
        } catch (const GivenUp &) {
            throw;
        } catch (const DbError &error) {
            if (!error.isLostConnection() || i + 1 == addresses.size())
                throw;
        }
    }
}

// The library would stand still while it looks the name up.
QStringList Database::addressesOf(const QString &server, const QDeadlineTimer &end)
{
    std::packaged_task<QStringList()> task([server] { return HostAddresses::lookUp(server); });
    std::future<QStringList> found = task.get_future();
    std::thread(std::move(task)).detach(); // nothing ends the system's look-up before its time
    const auto ended = m_wait.waitUntil([&] { return found.wait_for(0s) == std::future_status::ready; }, end);
    const QStringList addresses = ended == AnswerWait::End::Ready ? found.get() : QStringList();
    if (addresses.isEmpty()) {
        m_reachable = false;
        if (ended == AnswerWait::End::GivenUp)
            throw GivenUp();
        throw DbError(u"The address of the database server \"%1\" cannot be found"_s.arg(server), CR_UNKNOWN_HOST);
    }
    return addresses;
}

void Database::connectTo(const QString &host, const QDeadlineTimer &end)
{
    m_mysql.reset(mysql_init(nullptr));
    if (!m_mysql)
        throw DbError(u"Out of memory for a database connection"_s, 0);
    MYSQL *mysql = m_mysql.get();
    mysql_options(mysql, MYSQL_OPT_NONBLOCK, nullptr);
    constexpr unsigned seconds = answerMilliseconds / 1000;
    for (const auto limit : {MYSQL_OPT_CONNECT_TIMEOUT, MYSQL_OPT_READ_TIMEOUT, MYSQL_OPT_WRITE_TIMEOUT})
        mysql_options(mysql, limit, &seconds);
    mysql_options(mysql, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    for (const char *const setting : sessionSettings)
        mysql_options(mysql, MYSQL_INIT_COMMAND, setting);
    unsigned long flags = 0;
    if (m_options.option & optionFoundRows)
        flags |= CLIENT_FOUND_ROWS;
    if (m_options.option & optionBigPackets) {
        constexpr size_t largestPacket = size_t(1) << 30U;
        mysql_options(mysql, MYSQL_OPT_MAX_ALLOWED_PACKET, &largestPacket);
    }
    if (m_options.option & optionCompress)
        mysql_options(mysql, MYSQL_OPT_COMPRESS, nullptr);

    const QByteArray server = host.toUtf8();
    const QByteArray user = m_options.user.toUtf8();
    const QByteArray password = m_options.password.toUtf8();
    const QByteArray database = m_options.database.toUtf8();
    const bool isSocket = server.startsWith('/');
    MYSQL *connected = nullptr;
    const int status = mysql_real_connect_start(&connected, mysql, isSocket ? nullptr : server.constData(),
                                                user.constData(), password.constData(), database.constData(), 0,
                                                isSocket ? server.constData() : nullptr, flags);
    finish(status, end, {}, [&](int ready) { return mysql_real_connect_cont(&connected, mysql, ready); });
    if (!connected) {
        const DbError error(QString::fromUtf8(mysql_error(mysql)), mysql_errno(mysql));
        drop();
        throw error;
    }
    m_sinceAnswer.start();
    m_reachable = true;
}

void Database::drop()
{
    m_mysql.reset();
    m_reachable = false;
}

// Asking the server costs as much as a small statement. A server that ends or drops the connection tells it, so that
// there is something to read where nothing is expected; only what a network may have lost in silence needs to be asked
// for.
bool Database::isAlive()
{
    MYSQL *mysql = m_mysql.get();
    if (SocketPoll::waitFor(mysql_get_socket(mysql), {true, false}, 0).toRead)
        return false;
    if (!m_sinceAnswer.hasExpired(trustedMilliseconds))
        return true;
    try {
        int failed = 1;
        const int status = mysql_ping_start(&failed, mysql);
        finish(status, deadline(pingMilliseconds), {},
               [&](int ready) { return mysql_ping_cont(&failed, mysql, ready); });
        return failed == 0;
    } catch (const GivenUp &) {
        throw;
    } catch (const DbError &) {
        return false;
    }
}

void Database::send(const QString &sql)
{
    if (m_wait.isWaiting())
        throw DatabaseBusy();
    if (!m_mysql)
        throw DbError(u"The connection to the database server was lost"_s, CR_SERVER_LOST, sql);
    MYSQL *mysql = m_mysql.get();
    const QByteArray text = sql.toUtf8();
    int failed = 1;
    const int status =
        mysql_real_query_start(&failed, mysql, text.constData(), static_cast<unsigned long>(text.size()));
    finish(status, deadline(answerMilliseconds), sql,
           [&](int ready) { return mysql_real_query_cont(&failed, mysql, ready); });
    if (failed != 0)
        fail(sql);
    m_sinceAnswer.start();
    m_reachable = true;
}

MYSQL_RES *Database::takeRows()
{
    MYSQL *mysql = m_mysql.get();
    MYSQL_RES *rows = nullptr;
    const int status = mysql_store_result_start(&rows, mysql);
    finish(status, deadline(answerMilliseconds), {},
           [&](int ready) { return mysql_store_result_cont(&rows, mysql, ready); });
    return rows;
}

void Database::fail(const QString &sql)
{
    const DbError error(QString::fromUtf8(mysql_error(m_mysql.get())), mysql_errno(m_mysql.get()), sql);
    // After an error of the client's own the state of the connection is unknown: the next operation opens a new one.
    if (error.isLostConnection())
        drop();
    throw error;
}

DbConnection::DbConnection(Database &database, const QString &what) : m_database(database)
{
    m_database.begin(what);
}

qint64 DbConnection::execute(const QString &sql)
{
    m_database.send(sql);
    const qint64 touched = qint64(mysql_affected_rows(m_database.m_mysql.get()));
    // A statement such as SHOW may give rows all the same; unread they would block the next one.
    if (mysql_field_count(m_database.m_mysql.get()) != 0)
        mysql_free_result(m_database.takeRows());
    return touched;
}

DbRows DbConnection::query(const QString &sql)
{
    m_database.send(sql);
    MYSQL_RES *rows = m_database.takeRows();
    if (!rows)
        m_database.fail(sql);
    return DbRows(rows);
}

quint64 DbConnection::insertId() const
{
    return mysql_insert_id(m_database.m_mysql.get());
}

void DbConnection::drop()
{
    m_database.drop();
}

QuietReads::QuietReads(Database &database)
    : m_database(database), m_wasQuiet(database.m_wait.isQuiet()), m_endBefore(database.m_quietEnd)
{
    m_database.m_wait.setQuiet(true);
    m_database.m_quietEnd = m_database.deadline(m_database.isReachable() ? quietMilliseconds : quietAgainMilliseconds);
}

QuietReads::~QuietReads()
{
    m_database.m_wait.setQuiet(m_wasQuiet);
    m_database.m_quietEnd = m_endBefore;
}
