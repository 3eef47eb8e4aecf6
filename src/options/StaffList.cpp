#include "options/StaffList.h"

#include "app/ActivityLog.h"
#include "app/FieldLengths.h"
#include "app/Operation.h"
#include "app/SqlText.h"
#include "app/Staff.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int administratorAccess = 1;
constexpr int staffAccess = 2;

QString accessOf(AccessLevel level)
{
    return QString::number(level == AccessLevel::Admin ? administratorAccess : staffAccess);
}

QString inWords(AccessLevel level)
{
    return level == AccessLevel::Admin ? u"an administrator"_s : u"staff"_s;
}

bool canBeTyped(const QString &text)
{
    return !text.isEmpty() && cleanCredential(text) == text;
}

QString refusalOfLogin(const QString &login)
{
    if (login.isEmpty())
        return u"Please enter a login."_s;
    if (login.size() > FieldLengths::login)
        return sql(u"A login has at most %1 characters."_s, FieldLengths::login);
    if (canBeTyped(login))
        return {};
    const QString clean = cleanCredential(login);
    return sql(
        u"A login is made of the letters A to Z and a to z and of digits. The login window leaves out everything "
        "else: of \"%1\" it would make %2."_s,
        login, clean.isEmpty() ? u"nothing"_s : u'"' + clean + u'"');
}

QString refusalOfPassword(const TypedPassword &password)
{
    if (password.once.isEmpty())
        return u"Please enter a password, twice."_s;
    if (password.once != password.again)
        return u"The two passwords are not the same. Please type them again."_s;
    if (password.once.size() > FieldLengths::password)
        return sql(u"A password has at most %1 characters."_s, FieldLengths::password);
    if (!canBeTyped(password.once))
        return u"A password is made of the letters A to Z and a to z and of digits. The login window leaves out "
               u"everything "
               "else, so nobody could log in with this one."_s;
    return {};
}

struct Row
{
    QString id;
    QString login;
    bool isAdmin;    ///< by the table
    bool canLogInTo; ///< login and password can be typed in the login window
};

/// A change of the staff. All rows are held until it is over, so that two administrators change them one after the
/// other.
class StaffChange
{
public:
    StaffChange(Station &station, QString administrator, const QString &words)
        : m_station(station), m_administrator(std::move(administrator)), m_operation(station, words)
    {
    }

    /// `change` gives what stands against it; the words of the log are written when nothing does.
    template <typename Change>
    QString run(const QString &log, Change &&change)
    {
        QString refusal;
        m_operation.run([&] {
            readRows();
            refusal = isStillAdministrator()
                          ? QString(change(*this))
                          : sql(u"%1 is no administrator any more. Nothing was changed."_s, m_administrator);
            if (refusal.isEmpty())
                logWithin(m_operation, m_station, m_administrator, log);
            return refusal.isEmpty();
        });
        return refusal;
    }

    /// The same for somebody who is in the table.
    template <typename Change>
    QString runFor(const StaffMember &member, const QString &log, Change &&change)
    {
        return run(log, [&](StaffChange &all) {
            const auto row = std::find_if(m_rows.cbegin(), m_rows.cend(), [&](const Row &each) {
                return each.id == member.id && each.login == member.login;
            });
            if (row == m_rows.cend())
                return sql(u"%1 is not in the list any more: another administrator has changed it."_s, member.login);
            return QString(change(all, *row));
        });
    }

    [[nodiscard]] bool isLastAdministrator(const Row &row) const
    {
        return row.isAdmin && std::none_of(m_rows.cbegin(), m_rows.cend(), [&](const Row &other) {
                   return other.id != row.id && other.isAdmin && other.canLogInTo;
               });
    }

    Operation &operation() { return m_operation; }

private:
    // The options may stand open since before another administrator took the level away.
    [[nodiscard]] bool isStillAdministrator() const
    {
        return std::any_of(m_rows.cbegin(), m_rows.cend(),
                           [this](const Row &row) { return row.login == m_administrator && row.isAdmin; });
    }

    void readRows()
    {
        m_rows.clear();
        DbRows rows = m_operation.query(u"SELECT st_id, st_login, st_password, st_access FROM tbl_staff FOR UPDATE"_s);
        m_rows.reserve(std::size_t(rows.size()));
        while (rows.next())
            m_rows.push_back({rows.text("st_id"), rows.text("st_login"),
                              rows.number("st_access") == administratorAccess,
                              canBeTyped(rows.text("st_login")) && canBeTyped(rows.text("st_password"))});
    }

    Station &m_station;
    QString m_administrator;
    Operation m_operation;
    std::vector<Row> m_rows;
};

QString lastAdministratorText(const QString &login)
{
    return sql(u"%1 is the only administrator who can log in. Make somebody else an administrator first."_s, login);
}

} // namespace

std::vector<StaffMember> readStaff(Database &database)
{
    DbConnection connection(database);
    DbRows rows =
        connection.query(u"SELECT st_id, st_login, st_access, st_lastlogin FROM tbl_staff ORDER BY st_login"_s);
    std::vector<StaffMember> staff;
    staff.reserve(std::size_t(rows.size()));
    while (rows.next())
        staff.push_back({rows.text("st_id"), rows.text("st_login"),
                         rows.number("st_access") == administratorAccess ? AccessLevel::Admin : AccessLevel::Staff,
                         rows.text("st_lastlogin")});
    return staff;
}

QString addStaff(Station &station, const QString &administrator, const QString &login, const TypedPassword &password,
                 AccessLevel level)
{
    for (const QString &refusal : {refusalOfLogin(login), refusalOfPassword(password)})
        if (!refusal.isEmpty())
            return refusal;
    StaffChange change(station, administrator, u"The new staff member "_s + login);
    return change.run(sql(u"staff: added %1 as %2"_s, login, inWords(level)), [&](StaffChange &all) {
        DbRows same = all.operation().query(sql(u"SELECT st_login FROM tbl_staff WHERE st_login='%1'"_s, login));
        if (same.next())
            return sql(u"There is a staff member with the login %1 already."_s, same.text("st_login"));
        all.operation().execute(sql(u"INSERT INTO tbl_staff SET st_login='%1', st_password='%2', st_access=%3"_s, login,
                                    password.once, accessOf(level)));
        return QString();
    });
}

QString setStaffPassword(Station &station, const QString &administrator, const StaffMember &member,
                         const TypedPassword &password)
{
    if (const QString refusal = refusalOfPassword(password); !refusal.isEmpty())
        return refusal;
    StaffChange change(station, administrator, u"The new password of "_s + member.login);
    return change.runFor(member, u"staff: new password for "_s + member.login, [&](StaffChange &all, const Row &row) {
        all.operation().execute(sql(u"UPDATE tbl_staff SET st_password='%1' WHERE st_id=%2"_s, password.once, row.id));
        return QString();
    });
}

QString setStaffLevel(Station &station, const QString &administrator, const StaffMember &member, AccessLevel level)
{
    StaffChange change(station, administrator, u"The level of "_s + member.login);
    return change.runFor(member, sql(u"staff: %1 is %2 now"_s, member.login, inWords(level)),
                         [&](StaffChange &all, const Row &row) {
                             if (row.isAdmin == (level == AccessLevel::Admin))
                                 return sql(u"%1 is %2 already."_s, row.login, inWords(level));
                             if (all.isLastAdministrator(row))
                                 return lastAdministratorText(row.login);
                             all.operation().execute(
                                 sql(u"UPDATE tbl_staff SET st_access=%1 WHERE st_id=%2"_s, accessOf(level), row.id));
                             return QString();
                         });
}

QString removeStaff(Station &station, const QString &administrator, const StaffMember &member)
{
    if (member.login == administrator)
        return u"Nobody can remove themselves. Another administrator can do it."_s;
    if (member.login == station.CurrentStaff)
        return sql(u"%1 is serving this counter. Let somebody else log in here first."_s, member.login);
    StaffChange change(station, administrator, u"The removal of "_s + member.login);
    return change.runFor(member, u"staff: removed "_s + member.login, [&](StaffChange &all, const Row &row) {
        if (all.isLastAdministrator(row))
            return lastAdministratorText(row.login);
        all.operation().execute(u"DELETE FROM tbl_staff WHERE st_id="_s + row.id);
        return QString();
    });
}
