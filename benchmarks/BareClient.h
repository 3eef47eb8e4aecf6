#pragma once

#include "app/Database.h"

#include <QByteArrayList>

/// The client library with nothing round it, connected as the program connects: what every operation is compared with.
/// Everything here throws std::runtime_error.
class BareClient
{
public:
    explicit BareClient(const ConnectionOptions &options);

    /// Sends a statement, reads every column of every row and gives the bytes read.
    std::size_t send(const QByteArray &sql);
    /// Sends them one after the other.
    void sendAll(const QByteArrayList &statements);
    /// The last column of every row.
    QByteArrayList column(const QByteArray &sql);

private:
    using Result = std::unique_ptr<st_mysql_res, void (*)(st_mysql_res *)>;

    Result resultOf(const QByteArray &sql);
    [[noreturn]] void fail(const QByteArray &sql) const;

    std::unique_ptr<st_mysql, void (*)(st_mysql *)> m_mysql;
};

/// Notes what an account sends to the server while it lives.
class StatementLog
{
public:
    StatementLog(BareClient &root, const QString &account);
    StatementLog(const StatementLog &) = delete;
    StatementLog &operator=(const StatementLog &) = delete;
    ~StatementLog();

    /// The statements so far in their order, without those that set the session up.
    [[nodiscard]] QByteArrayList statements() const;

private:
    BareClient &m_root;
    QByteArray m_account;
};
