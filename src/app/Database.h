#pragma once

#include <QElapsedTimer>
#include <QString>

#include <memory>
#include <stdexcept>
#include <vector>

struct st_mysql;
struct st_mysql_res;

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

/// A statement or a connection that failed. what() is the server's text; the statement comes without passwords.
class DbError : public std::runtime_error
{
public:
    DbError(const QString &text, unsigned number, const QString &statement = {});

    [[nodiscard]] unsigned number() const { return m_number; }
    [[nodiscard]] QString statement() const { return m_statement; }
    /// True for error 1062: the row stands already.
    [[nodiscard]] bool isDuplicateKey() const { return m_number == 1062; }

private:
    unsigned m_number;
    QString m_statement;
};

/// The rows of one query, all of them on this side, read front to back.
class DbRows
{
public:
    explicit DbRows(st_mysql_res *result);

    /// Moves to the first, then to the next row; false at the end.
    bool next();
    /// The value in the present row; empty for NULL. Throws DbError when there is no such column.
    [[nodiscard]] QString text(const char *column) const;
    [[nodiscard]] QString text(unsigned column) const;
    /// The value as a number; 0 for NULL or a text that is no number.
    [[nodiscard]] int number(const char *column) const;
    [[nodiscard]] double amount(const char *column) const;
    [[nodiscard]] qsizetype size() const;

private:
    [[nodiscard]] unsigned columnIndex(const char *column) const;

    std::shared_ptr<st_mysql_res> m_result;
    char **m_row = nullptr;
    unsigned long *m_lengths = nullptr;
};

/// A station's one physical connection. It is opened by the first operation and kept.
class Database
{
public:
    explicit Database(const QString &connectionString);

private:
    friend class DbConnection;
    void open();
    void revive();
    bool isAlive();
    void send(const QString &sql);
    [[noreturn]] void fail(const QString &sql);

    ConnectionOptions m_options;
    std::unique_ptr<st_mysql, void (*)(st_mysql *)> m_mysql;
    QElapsedTimer m_sinceAnswer;
};

/// One operation's use of the database. Making one makes sure that the connection lives: when it died while idle it is
/// opened again, once. A statement whose answer was lost is never sent twice. Everything here throws DbError.
class DbConnection
{
public:
    explicit DbConnection(Database &database);

    /// Runs a statement that gives no rows.
    void execute(const QString &sql);
    [[nodiscard]] DbRows query(const QString &sql);

private:
    Database &m_database;
};
