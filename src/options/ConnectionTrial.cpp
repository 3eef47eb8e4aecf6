#include "options/ConnectionTrial.h"

#include "app/Database.h"
#include "app/Settings.h"

using namespace Qt::StringLiterals;

namespace {

const QString howToInstall = u" Run database/install against this server: it makes the database, its tables and the "
                             "account of the program."_s;

// The numbers of the server (1000 …) and of the client library (2000 …).
enum Number : unsigned {
    NoRightsToDatabase = 1044,
    WrongPassword = 1045,
    NoDatabase = 1049,
    ComputerNotAllowed = 1130,
    NoAccountForPassword = 1698,
    NoSocket = 2002,
    NoServer = 2003,
    UnknownHost = 2005,
    NoAnswer = 2013
};

QString wordsOf(const DbError &error, const QString &server)
{
    switch (error.number()) {
    case UnknownHost:
        return u"No computer named \"%1\" is known here. Look at the spelling, or enter its address."_s.arg(server);
    case NoSocket:
    case NoServer:
        return u"Nobody answers as a database server at \"%1\". Is it switched on, does the server run, and does its "
               "firewall let this computer through?"_s.arg(server);
    case NoAnswer:
        return u"\"%1\" did not answer in time. Is it a database server, and is the network well?"_s.arg(server);
    case WrongPassword:
    case NoAccountForPassword:
        return u"The server is there, but it does not take this account with this password from this computer."_s;
    case ComputerNotAllowed:
        return u"The server is there, but takes no connections from this computer. database/install says with "
               "--counter-hosts from which computers it does."_s;
    case NoDatabase:
        return u"The server takes the account, but has no database posdb."_s + howToInstall;
    case NoRightsToDatabase:
        return u"The server takes the account, but the account may not use posdb, or there is none."_s + howToInstall;
    default:
        return u"The server says: "_s + QString::fromUtf8(error.what());
    }
}

QStringList missingTables(DbConnection &connection)
{
    QStringList missing{u"tbl_booking"_s,
                        u"tbl_remark"_s,
                        u"tbl_waitlist"_s,
                        u"tbl_waitlist_clipboard"_s,
                        u"tbl_light"_s,
                        u"tbl_rate"_s,
                        u"tbl_item"_s,
                        u"tbl_member"_s,
                        u"tbl_student"_s,
                        u"tbl_staff"_s,
                        u"tbl_system"_s,
                        u"tbl_log"_s,
                        u"tbl_counter1"_s,
                        u"tbl_shift1"_s,
                        u"tbl_booking_clipboard1"_s};
    DbRows tables = connection.query(u"show tables;"_s);
    while (tables.next())
        missing.removeAll(tables.text(0U));
    return missing;
}

} // namespace

ConnectionTrial tryConnection(const QString &server, const QString &user, const QString &password, WaitSign *sign)
{
    AppSettings settings;
    settings.databaseServer = server;
    settings.databaseUser = user;
    settings.databasePassword = password;
    Database database(connectionString(settings));
    database.setWaitSign(sign);
    try {
        DbConnection connection(database, u"Trying the connection to the database server …"_s);
        const QStringList missing = missingTables(connection);
        if (missing.isEmpty())
            return {true, u"The connection works, and posdb has its tables."_s};
        return {false, u"The connection works, but posdb lacks "_s +
                           (missing.size() > 3 ? u"%1 of its tables."_s.arg(missing.size())
                                               : u"the table "_s + missing.join(u", "_s) + u'.') +
                           howToInstall};
    } catch (const GivenUp &) {
        return {false, u"The trial was given up."_s};
    } catch (const DbError &error) {
        return {false, wordsOf(error, server)};
    }
}

QString whyNotInConnection(const QString &name, const QString &value)
{
    return value.contains(u';') ? name + u" cannot have a semicolon in it: it ends a part of the connection."_s
                                : QString();
}
