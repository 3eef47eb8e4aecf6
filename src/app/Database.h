#pragma once

#include "app/AnswerWait.h"
#include "app/DbError.h"
#include "app/DbRows.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QStringList>

#include <memory>

struct st_mysql;

/// What the text "DRIVER={…};SERVER=…;DATABASE=…;UID=…;PWD=…;OPTION=…" says. A server that begins with "/" is a
/// unix socket. Unknown keys are ignored; a ";" ends a value, so a password cannot hold one.
struct ConnectionOptions
{
    QString server;
    QString database;
    QString user;
    QString password;
    unsigned option = 0;

    static ConnectionOptions parse(const QString &connectionString);
};

/// A station's one physical connection. It is opened by the first operation and kept.
class Database
{
public:
    explicit Database(const QString &connectionString);

    /// Who tells the person of a long wait; it outlives the database or is taken away again.
    void setWaitSign(WaitSign *sign) { m_wait.setSign(sign); }
    /// An answer is being waited for: whatever is asked meanwhile gets DatabaseBusy.
    [[nodiscard]] bool isWaiting() const { return m_wait.isWaiting(); }
    /// False after a connection was lost or could not be opened, until an answer has come again.
    [[nodiscard]] bool isReachable() const { return m_reachable; }
    /// Lets some time go by while the windows stay alive; false when the person gave up.
    bool pause(int milliseconds, const QString &what);

private:
    friend class DbConnection;
    friend class QuietReads;
    void begin(const QString &what);
    void open();
    void connectTo(const QString &host, const QDeadlineTimer &end);
    [[nodiscard]] QStringList addressesOf(const QString &server, const QDeadlineTimer &end);
    void drop();
    bool isAlive();
    void send(const QString &sql);
    st_mysql_res *takeRows();
    [[nodiscard]] QDeadlineTimer deadline(qint64 milliseconds) const;
    /// Carries one call of the client library through: `status` is what its beginning gave, `go` takes it on. Throws
    /// DbError when the time is over or the person gave up.
    template <typename Continue>
    void finish(int status, const QDeadlineTimer &deadline, const QString &sql, Continue go);
    [[noreturn]] void fail(const QString &sql);

    ConnectionOptions m_options;
    std::unique_ptr<st_mysql, void (*)(st_mysql *)> m_mysql;
    AnswerWait m_wait;
    QDeadlineTimer m_quietEnd{QDeadlineTimer::Forever};
    QElapsedTimer m_sinceAnswer;
    bool m_reachable = true;
};

/// One operation's use of the database. Making one makes sure that the connection lives: when it died while idle it is
/// opened again, once. A statement whose answer was lost is never sent twice. Answers are waited for in place while the
/// windows stay alive. Everything here throws DbError, and DatabaseBusy when another answer is being waited for.
class DbConnection
{
public:
    /// `what` is what the person is told after half a second of waiting; a plain sentence when it is empty.
    explicit DbConnection(Database &database, const QString &what = {});

    /// Runs a statement that gives no rows; gives the number of rows that it touched.
    qint64 execute(const QString &sql);
    [[nodiscard]] DbRows query(const QString &sql);
    /// The number that the last INSERT got from the database.
    [[nodiscard]] quint64 insertId() const;
    /// Ends the connection; the server rolls back and gives back locks.
    void drop();

private:
    Database &m_database;
};

/// While one stands, what is read was asked for by nobody: all of it together gives up after a second, no window tells
/// of it, and the person's input waits.
class QuietReads
{
public:
    explicit QuietReads(Database &database);
    QuietReads(const QuietReads &) = delete;
    QuietReads &operator=(const QuietReads &) = delete;
    ~QuietReads();

private:
    Database &m_database;
    bool m_wasQuiet;
    QDeadlineTimer m_endBefore;
};
