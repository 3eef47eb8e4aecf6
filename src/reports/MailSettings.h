#pragma once

#include <QString>

/// How this counter sends mail: the section [Mail] of its settings.
struct MailSettings
{
    enum class Security { None, StartTls, Tls };

    QString server;
    int port = 0;
    Security security = Security::StartTls;
    QString user; ///< empty where the server wants no login
    QString password;
    QString from;        ///< the address that mails come from
    QString authorities; ///< file of certificates that vouch for the server; empty: those of the system
    int seconds = 60;    ///< how long a server that says nothing is waited for

    /// Whether there is enough to send a mail with.
    [[nodiscard]] bool complete() const { return !server.isEmpty() && !from.isEmpty(); }
};

/// As the settings stand now; keys that are missing are not written. Throws NotDone for a port that is none, a security
/// other than none, starttls and tls, and a sender that is no address.
MailSettings readMailSettings();
