#pragma once

#include <QString>

#include <stdexcept>

/// A statement or a connection that failed. what() is the server's text. Of a statement that carries a password neither
/// the text nor the statement is told, only the number and a plain sentence.
class DbError : public std::runtime_error
{
public:
    DbError(const QString &text, unsigned number, const QString &statement = {});

    [[nodiscard]] unsigned number() const { return m_number; }
    [[nodiscard]] QString statement() const { return m_statement; }
    /// 1062: the row stands already.
    [[nodiscard]] bool isDuplicateKey() const { return m_number == 1062; }
    /// 1213, 1205 or 1020: another counter was in the way, and nothing of the operation stands once it is rolled back.
    [[nodiscard]] bool isConflict() const { return m_number == 1213 || m_number == 1205 || m_number == 1020; }
    /// An error of the client's own: the connection is gone, and what became of the statement is not known.
    [[nodiscard]] bool isLostConnection() const { return m_number >= 2000 && m_number < 3000; }

private:
    unsigned m_number;
    QString m_statement;
};

/// The person did not want to wait any longer.
class GivenUp : public DbError
{
public:
    explicit GivenUp(const QString &statement = {});
};

/// The database is asked for something while an answer is being waited for. Whoever pressed that is not served: nothing
/// is carried out twice or later.
class DatabaseBusy : public std::runtime_error
{
public:
    DatabaseBusy() : std::runtime_error("The database server has not answered yet") {}
};
