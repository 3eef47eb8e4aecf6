#pragma once

#include <QString>

/// What the text "DRIVER={…};SERVER=…;DATABASE=…;UID=…;PWD=…;OPTION=…" says. A server that begins with "/" is a
/// unix socket. Unknown keys are ignored; a ";" ends a value, so a password cannot hold one.
struct ConnectionOptions
{
    // The option bits that the client library knows; the others concern the driver's own cursors.
    static constexpr unsigned foundRows = 2;
    static constexpr unsigned bigPackets = 8;
    static constexpr unsigned compress = 2048;

    QString server;
    QString database;
    QString user;
    QString password;
    unsigned option = 0;

    static ConnectionOptions parse(const QString &connectionString);
    /// The server's name is neither an address nor a socket, nor this machine's.
    [[nodiscard]] bool needsLookUp() const;
};
