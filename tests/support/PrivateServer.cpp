#include "support/PrivateServer.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QThread>

#include <mysql.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <memory>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

// In memory where there is room, because making tables waits for the disk many times. Not below the build folder: unix
// socket paths end at 107 bytes.
QString folderOfServers()
{
    constexpr qint64 room = qint64(512) << 20U;
    return QStorageInfo(u"/dev/shm"_s).bytesAvailable() > room ? u"/dev/shm"_s : u"/tmp"_s;
}

// Small files and no waiting for the disk: a server is made for one test program and thrown away.
const QStringList serverSettings =
    u"--no-defaults --skip-networking --skip-name-resolve --skip-log-bin --performance-schema=off "
    "--character-set-server=utf8mb4 --innodb-buffer-pool-size=16M --innodb-log-file-size=4M "
    "--innodb-undo-tablespaces=0 "
    "--innodb-file-per-table=0 --innodb-flush-log-at-trx-commit=2 --innodb-flush-method=nosync"_s.split(u' ');

QStringList accountOption()
{
    return geteuid() == 0 ? QStringList{u"--user=root"_s} : QStringList{};
}

QByteArray run(const QString &program, const QStringList &arguments, const QString &folder = {})
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(120'000) || process.exitCode() != 0)
        throw std::runtime_error("Cannot run " + program.toStdString() + ": " + process.readAll().toStdString());
    return process.readAll();
}

// Making a data folder takes seconds, copying one does not: one is made for each version of the server and kept.
QString templateFolder()
{
    const QByteArray version = run(u"mariadbd"_s, {u"--version"_s});
    const QByteArray key =
        QCryptographicHash::hash(version + serverSettings.join(u' ').toUtf8(), QCryptographicHash::Sha1);
    QDir templates(QStringLiteral(TAMSORA_SERVER_TEMPLATES));
    templates.mkpath(u"."_s);
    const QString folder = templates.filePath(QString::fromLatin1(key.toHex().left(12)));
    QLockFile lock(folder + u".lock"_s);
    lock.setStaleLockTime(0);
    lock.lock();
    if (!QDir(folder).exists()) {
        QDir(folder + u".new"_s).removeRecursively();
        // From inside the folder, because the script stumbles over a blank in a path. With --force a machine whose own
        // name cannot be looked up will do.
        run(u"mariadb-install-db"_s,
            QStringList{u"--no-defaults"_s, u"--datadir=./"_s + QDir(folder).dirName() + u".new"_s, u"--skip-test-db"_s,
                        u"--auth-root-authentication-method=normal"_s, u"--force"_s, u"--innodb-log-file-size=4M"_s,
                        u"--innodb-undo-tablespaces=0"_s} +
                accountOption(),
            templates.path());
        templates.rename(folder + u".new"_s, folder);
    }
    return folder;
}

// A crashed test program leaves its folder behind; the next one takes it away.
void removeLeftFolders()
{
    const QDir servers(folderOfServers());
    const auto names = servers.entryList({u"tamsora-test-*"_s}, QDir::Dirs);
    for (const QString &name : names)
        if (!QFile::exists(u"/proc/"_s + name.section(u'-', 2, 2) + u"/exe"_s)) // a dead one may still be listed
            QDir(servers.filePath(name)).removeRecursively();
}

using Connection = std::unique_ptr<MYSQL, decltype(&mysql_close)>;

// Empty while the server does not answer.
Connection connectTo(const QString &socket)
{
    Connection mysql(mysql_init(nullptr), &mysql_close);
    mysql_options(mysql.get(), MYSQL_SET_CHARSET_NAME, "utf8mb4");
    if (!mysql_real_connect(mysql.get(), nullptr, "root", "", nullptr, 0, socket.toUtf8().constData(),
                            CLIENT_MULTI_STATEMENTS))
        mysql.reset();
    return mysql;
}

void addRows(QStringList &lines, MYSQL_RES *result)
{
    while (char **row = mysql_fetch_row(result)) {
        QStringList columns;
        for (unsigned i = 0; i < mysql_num_fields(result); ++i)
            columns << (row[i] ? QString::fromUtf8(row[i]) : u"NULL"_s);
        lines << columns.join(u'|');
    }
    mysql_free_result(result);
}

} // namespace

PrivateServer::PrivateServer()
    : m_folder(folderOfServers() + u"/tamsora-test-"_s + QString::number(QCoreApplication::applicationPid()) +
               u"-XXXXXX"_s)
{
    removeLeftFolders();
    run(u"cp"_s, {u"-r"_s, u"--sparse=always"_s, templateFolder(), m_folder.filePath(u"data"_s)});
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(m_folder.filePath(u"server.log"_s), QIODevice::Append);
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
    exec(u"CREATE USER counter@localhost; GRANT ALL ON posdb.* TO counter@localhost"_s);
    freshDatabase();
}

PrivateServer::~PrivateServer()
{
    end(&QProcess::kill);
}

void PrivateServer::start()
{
    m_process.start(u"mariadbd"_s,
                    serverSettings + accountOption() +
                        QStringList{u"--datadir="_s + m_folder.filePath(u"data"_s), u"--socket="_s + socketPath(),
                                    u"--tmpdir="_s + m_folder.path()}); // servers clear a common one at their start
    const QDeadlineTimer deadline(60'000);
    while (!connectTo(socketPath())) {
        if (deadline.hasExpired() || m_process.waitForFinished(0)) {
            QFile log(m_folder.filePath(u"server.log"_s));
            const bool canRead = log.open(QIODevice::ReadOnly);
            throw std::runtime_error("The test's server did not start: " +
                                     (canRead ? log.readAll().right(3000).toStdString() : std::string()));
        }
        QThread::msleep(10);
    }
}

void PrivateServer::end(void (QProcess::*way)())
{
    (m_process.*way)();
    if (!m_process.waitForFinished(60'000))
        m_process.kill();
}

void PrivateServer::stop()
{
    end(&QProcess::terminate);
}

void PrivateServer::kill()
{
    end(&QProcess::kill);
}

void PrivateServer::pause() const
{
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

void PrivateServer::resume() const
{
    ::kill(pid_t(m_process.processId()), SIGCONT);
}

QString PrivateServer::socketPath() const
{
    return m_folder.filePath(u"socket"_s);
}

QString PrivateServer::connectionString() const
{
    return u"DRIVER={MySQL ODBC 3.51 Driver};SERVER="_s + socketPath() +
           u";DATABASE=posdb;UID=counter;PWD=;OPTION=18475"_s;
}

void PrivateServer::freshDatabase() const
{
    QFile schema(QStringLiteral(TAMSORA_SCHEMA));
    if (!schema.open(QIODevice::ReadOnly))
        throw std::runtime_error("There is no " TAMSORA_SCHEMA);
    exec(u"DROP DATABASE IF EXISTS posdb; CREATE DATABASE posdb; USE posdb; "_s + QString::fromUtf8(schema.readAll()));
}

void PrivateServer::exec(const QString &sql) const
{
    (void)rows(sql);
}

QStringList PrivateServer::rows(const QString &sql) const
{
    const Connection mysql = connectTo(socketPath());
    if (!mysql)
        throw std::runtime_error("The test's server does not answer");
    const QByteArray text = sql.toUtf8();
    mysql_select_db(mysql.get(), "posdb"); // there is none before the first freshDatabase()
    QStringList lines;
    int more = mysql_real_query(mysql.get(), text.constData(), static_cast<unsigned long>(text.size()));
    for (; more == 0; more = mysql_next_result(mysql.get()))
        if (MYSQL_RES *result = mysql_store_result(mysql.get()))
            addRows(lines, result);
    if (more > 0)
        throw std::runtime_error("The test's own statement failed: " + std::string(mysql_error(mysql.get())) + ": " +
                                 sql.toStdString());
    return lines;
}

void PrivateServer::startLog() const
{
    exec(u"SET GLOBAL general_log = OFF; SET GLOBAL log_output = 'TABLE'; TRUNCATE TABLE mysql.general_log;"
         "SET GLOBAL general_log = ON"_s);
}

QStringList PrivateServer::takeWholeLog() const
{
    const QStringList log = rows(u"SELECT argument FROM mysql.general_log WHERE command_type = 'Query'"
                                 " AND user_host LIKE 'counter[%' AND argument NOT LIKE 'SET SESSION %'"_s);
    exec(u"SET GLOBAL general_log = OFF"_s);
    return log;
}

QStringList PrivateServer::takeLog() const
{
    static const QRegularExpression frame(u"^(START TRANSACTION|COMMIT|ROLLBACK|SELECT (GET|RELEASE)_LOCK.*|"
                                          "SELECT b_field, b_bookername, b_extratime FROM .*|.* FOR UPDATE)$"_s);
    QStringList log = takeWholeLog();
    log.removeIf([](const QString &statement) { return frame.match(statement).hasMatch(); });
    return log;
}

void PrivateServer::cutConnections() const
{
    exec(u"KILL USER counter"_s);
}
