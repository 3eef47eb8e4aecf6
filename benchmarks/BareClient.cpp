#include "BareClient.h"

#include <mysql.h>

namespace {

// The bits of the connection string's option that the client library knows.
constexpr unsigned optionFoundRows = 2;
constexpr unsigned optionBigPackets = 8;
constexpr unsigned optionCompress = 2048;

} // namespace

BareClient::BareClient(const ConnectionOptions &options) : m_mysql(mysql_init(nullptr), &mysql_close)
{
    constexpr size_t largestPacket = size_t(1) << 30U;
    constexpr unsigned seconds = 60;
    MYSQL *mysql = m_mysql.get();
    mysql_options(mysql, MYSQL_OPT_READ_TIMEOUT, &seconds);
    mysql_options(mysql, MYSQL_OPT_WRITE_TIMEOUT, &seconds);
    mysql_options(mysql, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    mysql_options(mysql, MYSQL_INIT_COMMAND, "SET SESSION sql_mode='', sql_auto_is_null=0");
    if (options.option & optionBigPackets)
        mysql_options(mysql, MYSQL_OPT_MAX_ALLOWED_PACKET, &largestPacket);
    if (options.option & optionCompress)
        mysql_options(mysql, MYSQL_OPT_COMPRESS, nullptr);
    const unsigned long flags = (options.option & optionFoundRows) ? CLIENT_FOUND_ROWS : 0;
    if (!mysql_real_connect(mysql, nullptr, options.user.toUtf8().constData(), options.password.toUtf8().constData(),
                            options.database.toUtf8().constData(), 0, options.server.toUtf8().constData(), flags))
        fail("connect");
}

std::size_t BareClient::send(const QByteArray &sql)
{
    const Result result = resultOf(sql);
    std::size_t bytes = 0;
    if (!result)
        return bytes;
    const unsigned columns = mysql_num_fields(result.get());
    while (char **row = mysql_fetch_row(result.get())) {
        const unsigned long *lengths = mysql_fetch_lengths(result.get());
        for (unsigned i = 0; i < columns; ++i)
            bytes += row[i] ? lengths[i] : 0;
    }
    return bytes;
}

void BareClient::sendAll(const QByteArrayList &statements)
{
    for (const QByteArray &sql : statements)
        send(sql);
}

QByteArrayList BareClient::column(const QByteArray &sql)
{
    const Result result = resultOf(sql);
    QByteArrayList values;
    while (char **row = result ? mysql_fetch_row(result.get()) : nullptr)
        values << QByteArray(row[mysql_num_fields(result.get()) - 1]);
    return values;
}

BareClient::Result BareClient::resultOf(const QByteArray &sql)
{
    if (mysql_real_query(m_mysql.get(), sql.constData(), static_cast<unsigned long>(sql.size())) != 0)
        fail(sql);
    Result result(mysql_store_result(m_mysql.get()), &mysql_free_result);
    if (!result && mysql_errno(m_mysql.get()) != 0)
        fail(sql);
    return result;
}

void BareClient::fail(const QByteArray &sql) const
{
    throw std::runtime_error(std::string(mysql_error(m_mysql.get())) + ": " + sql.toStdString());
}

StatementLog::StatementLog(BareClient &root, const QString &account) : m_root(root), m_account(account.toUtf8())
{
    m_root.sendAll(
        {"SET GLOBAL log_output = 'TABLE'", "TRUNCATE TABLE mysql.general_log", "SET GLOBAL general_log = ON"});
}

StatementLog::~StatementLog()
{
    try {
        m_root.send("SET GLOBAL general_log = OFF");
    } catch (const std::exception &error) {
        qCritical("%s", error.what());
    }
}

QByteArrayList StatementLog::statements() const
{
    return m_root.column("SELECT argument FROM mysql.general_log WHERE command_type = 'Query' AND user_host LIKE '" +
                         m_account + "[%' AND argument NOT LIKE 'SET SESSION %'");
}
