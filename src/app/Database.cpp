#include "app/Database.h"

#include <QRegularExpression>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <poll.h>
#endif

#include <errmsg.h>
#include <mysql.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned connectSeconds = 5;
constexpr unsigned answerSeconds = 15;
constexpr qint64 trustedMilliseconds = 5000;
constexpr unsigned firstClientError = 2000;
constexpr unsigned firstServerErrorAbove = 3000;

// The option bits of the connection string that the client library knows; the others concern the driver's own cursors.
constexpr unsigned optionFoundRows = 2;
constexpr unsigned optionBigPackets = 8;
constexpr unsigned optionCompress = 2048;

QString withoutSecrets(QString sql)
{
    static const QRegularExpression password(u"(st_password\\s*=\\s*')(?:[^'\\\\]|\\\\.)*'?"_s);
    return sql.replace(password, u"\\1…'"_s);
}

bool hasSomethingToRead(my_socket socket)
{
#ifdef Q_OS_WIN
    WSAPOLLFD state{socket, POLLRDNORM, 0};
    return WSAPoll(&state, 1, 0) != 0;
#else
    pollfd state{socket, POLLIN, 0};
    return poll(&state, 1, 0) != 0;
#endif
}

QString serverText(st_mysql *mysql)
{
    return QString::fromUtf8(mysql_error(mysql));
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

DbError::DbError(const QString &text, unsigned number, const QString &statement)
    : std::runtime_error(text.toStdString()), m_number(number), m_statement(withoutSecrets(statement))
{
}

DbRows::DbRows(st_mysql_res *result) : m_result(result, &mysql_free_result) {}

bool DbRows::next()
{
    m_row = mysql_fetch_row(m_result.get());
    m_lengths = m_row ? mysql_fetch_lengths(m_result.get()) : nullptr;
    return m_row != nullptr;
}

unsigned DbRows::columnIndex(const char *column) const
{
    const unsigned count = mysql_num_fields(m_result.get());
    const MYSQL_FIELD *fields = mysql_fetch_fields(m_result.get());
    for (unsigned i = 0; i < count; ++i)
        if (qstricmp(fields[i].name, column) == 0)
            return i;
    throw DbError(u"The result has no column "_s + QString::fromUtf8(column), 0);
}

QString DbRows::text(unsigned column) const
{
    if (!m_row)
        throw DbError(u"There is no row to read"_s, 0);
    return m_row[column] ? QString::fromUtf8(m_row[column], qsizetype(m_lengths[column])) : QString();
}

QString DbRows::text(const char *column) const
{
    return text(columnIndex(column));
}

int DbRows::number(const char *column) const
{
    return text(column).toInt();
}

double DbRows::amount(const char *column) const
{
    return text(column).toDouble();
}

qsizetype DbRows::size() const
{
    return qsizetype(mysql_num_rows(m_result.get()));
}

Database::Database(const QString &connectionString)
    : m_options(ConnectionOptions::parse(connectionString)), m_mysql(nullptr, &mysql_close)
{
}

void Database::open()
{
    m_mysql.reset(mysql_init(nullptr));
    if (!m_mysql)
        throw DbError(u"Out of memory for a database connection"_s, 0);
    MYSQL *mysql = m_mysql.get();
    mysql_options(mysql, MYSQL_OPT_CONNECT_TIMEOUT, &connectSeconds);
    mysql_options(mysql, MYSQL_OPT_READ_TIMEOUT, &answerSeconds);
    mysql_options(mysql, MYSQL_OPT_WRITE_TIMEOUT, &answerSeconds);
    mysql_options(mysql, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    // Numbers arrive as quoted text, an empty receipt number as '', texts between double quotes.
    mysql_options(mysql, MYSQL_INIT_COMMAND, "SET SESSION sql_mode='', sql_auto_is_null=0");
    unsigned long flags = 0;
    if (m_options.option & optionFoundRows)
        flags |= CLIENT_FOUND_ROWS;
    if (m_options.option & optionBigPackets) {
        constexpr size_t largestPacket = size_t(1) << 30U;
        mysql_options(mysql, MYSQL_OPT_MAX_ALLOWED_PACKET, &largestPacket);
    }
    if (m_options.option & optionCompress)
        mysql_options(mysql, MYSQL_OPT_COMPRESS, nullptr);

    const QByteArray server = m_options.server.toUtf8();
    const bool isSocket = server.startsWith('/');
    if (!mysql_real_connect(mysql, isSocket ? nullptr : server.constData(), m_options.user.toUtf8().constData(),
                            m_options.password.toUtf8().constData(), m_options.database.toUtf8().constData(), 0,
                            isSocket ? server.constData() : nullptr, flags))
        fail({});
}

void Database::revive()
{
    if (!m_mysql || !isAlive())
        open();
}

// Asking the server costs as much as a small statement. A server that ends or drops the connection tells it, so that
// there is something to read where nothing is expected; only what a network may have lost in silence needs to be asked
// for.
bool Database::isAlive()
{
    if (hasSomethingToRead(mysql_get_socket(m_mysql.get())))
        return false;
    return !m_sinceAnswer.hasExpired(trustedMilliseconds) || mysql_ping(m_mysql.get()) == 0;
}

void Database::send(const QString &sql)
{
    if (!m_mysql)
        throw DbError(u"The connection to the database server was lost"_s, CR_SERVER_LOST, sql);
    const QByteArray text = sql.toUtf8();
    if (mysql_real_query(m_mysql.get(), text.constData(), static_cast<unsigned long>(text.size())) != 0)
        fail(sql);
    m_sinceAnswer.start();
}

void Database::fail(const QString &sql)
{
    const unsigned number = mysql_errno(m_mysql.get());
    const DbError error(serverText(m_mysql.get()), number, sql);
    // After an error of the client's own the state of the connection is unknown: the next operation opens a new one.
    if (number >= firstClientError && number < firstServerErrorAbove)
        m_mysql.reset();
    throw error;
}

DbConnection::DbConnection(Database &database) : m_database(database)
{
    m_database.revive();
}

void DbConnection::execute(const QString &sql)
{
    m_database.send(sql);
    // A statement such as SHOW may give rows all the same; unread they would block the next one.
    if (MYSQL_RES *rows = mysql_store_result(m_database.m_mysql.get()))
        mysql_free_result(rows);
    else if (mysql_errno(m_database.m_mysql.get()) != 0)
        m_database.fail(sql);
}

DbRows DbConnection::query(const QString &sql)
{
    m_database.send(sql);
    MYSQL_RES *result = mysql_store_result(m_database.m_mysql.get());
    if (!result)
        m_database.fail(sql);
    return DbRows(result);
}
