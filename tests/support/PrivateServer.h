#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A MariaDB server of a test program's own: on a unix socket in a folder of its own, gone when the program ends, also
/// when it crashes. Its database posdb holds the program's schema and no rows. Everything here throws
/// std::runtime_error.
class PrivateServer
{
public:
    PrivateServer();
    ~PrivateServer();
    PrivateServer(const PrivateServer &) = delete;
    PrivateServer &operator=(const PrivateServer &) = delete;

    void start();
    void stop();        ///< the ordinary way, with all data kept
    void kill();        ///< as by a power failure
    void pause() const; ///< answers nobody, also no function of this class, until resume() or an end
    void resume() const;

    [[nodiscard]] QString socketPath() const;
    /// For AppSettings::ConnectionString. The account of the program is not the one that the functions below use.
    [[nodiscard]] QString connectionString() const;

    /// Makes posdb anew, whatever a test did to it.
    void freshDatabase() const;
    void exec(const QString &sql) const; ///< one or more statements, separated by semicolons
    /// The result as lines of text: columns separated by "|", NULL as "NULL".
    [[nodiscard]] QStringList rows(const QString &sql) const;

    /// From here on, what the program sends is noted; takeWholeLog() gives it in order, without the session's settings.
    /// The server's log leaves out a semicolon and blanks at the end of a statement.
    void startLog() const;
    [[nodiscard]] QStringList takeWholeLog() const;
    /// Only what the operations are about: without their transactions, locks and looks at the ground.
    [[nodiscard]] QStringList takeLog() const;

    /// Ends the program's connections from the server's side.
    void cutConnections() const;

private:
    void end(void (QProcess::*way)());

    QTemporaryDir m_folder;
    QProcess m_process;
};
