#include "app/Staff.h"

#include "app/ActivityLog.h"
#include "app/CounterState.h"
#include "app/Formats.h"
#include "app/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The login and password go into the query's text, so a query can be talked into returning other rows: only a row that
// carries what was typed lets anybody in.
bool findRowOf(DbRows &rows, const QString &login, const QString &password)
{
    while (rows.next())
        if (rows.text("st_login") == login && rows.text("st_password") == password)
            return true;
    return false;
}

} // namespace

QString cleanCredential(const QString &text)
{
    QString clean;
    std::copy_if(text.cbegin(), text.cend(), std::back_inserter(clean), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
    });
    return clean;
}

bool logIn(Station &station, const QString &login, const QString &password)
{
    DbConnection connection(station.database);
    DbRows rows = connection.query(u"SELECT *  from tbl_staff where st_login ='"_s + login + u"' AND st_password='"_s +
                                   password + u"'"_s);
    if (!findRowOf(rows, login, password))
        return false;
    SetCounterStaff(station.database, station.settings.ThisCounter, login);
    station.CurrentStaff = login;
    WriteActivityLog(station, station.CurrentStaff, u"logging in"_s);
    UpdateLastLogin(station, station.CurrentStaff);
    return true;
}

QString lastLoginStatement(const Station &station, const QString &login)
{
    return sql(u"UPDATE tbl_staff SET st_lastlogin='%1' WHERE st_login='%2'"_s, sqlDateTime(station.now()), login);
}

void UpdateLastLogin(Station &station, const QString &login)
{
    DbConnection connection(station.database);
    connection.execute(lastLoginStatement(station, login));
}

bool isAdministrator(Database &database, const QString &login, const QString &password)
{
    DbConnection connection(database);
    DbRows rows = connection.query(u"SELECT * from tbl_staff where st_login ='"_s + login + u"' AND st_password='"_s +
                                   password + u"' AND st_access=1"_s);
    return findRowOf(rows, login, password) && rows.number("st_access") == 1;
}

std::optional<Verification> findStaff(Database &database, const QString &login, const QString &password)
{
    DbConnection connection(database);
    DbRows rows = connection.query(
        sql(u"SELECT * from tbl_staff where st_login ='%1' AND st_password='%2'"_s, quoted(login), quoted(password)));
    if (!findRowOf(rows, login, password))
        return std::nullopt;
    return Verification{login, rows.number("st_access") == 1 ? AccessLevel::Admin : AccessLevel::Staff};
}
