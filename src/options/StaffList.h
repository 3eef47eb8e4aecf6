#pragma once

#include "app/Station.h"

#include <vector>

/// Who may work at the counters (tbl_staff), as administrators change it. Every change is one operation together with
/// its row in tbl_log, which never holds a password. What gives a QString gives what stands against the change, in a
/// sentence for the administrator, or an empty text when it is done. All throw DbError and NotDone.

struct StaffMember
{
    QString id;
    QString login;
    AccessLevel level = AccessLevel::Staff;
    QString lastLogin; ///< "yyyy-mm-dd hh:mm:ss", empty before the first
};

/// A password as it was typed, twice.
struct TypedPassword
{
    QString once;
    QString again;
};

/// In the order of their logins.
std::vector<StaffMember> readStaff(Database &database);

/// Login and password are refused when the login window would make something else of them, and a login that there is
/// already, as the table compares them.
QString addStaff(Station &station, const QString &administrator, const QString &login, const TypedPassword &password,
                 AccessLevel level);
QString setStaffPassword(Station &station, const QString &administrator, const StaffMember &member,
                         const TypedPassword &password);

/// One administrator who can log in always stays, whatever two of them do to each other at the same moment.
QString setStaffLevel(Station &station, const QString &administrator, const StaffMember &member, AccessLevel level);
/// Nobody removes themselves, nor who serves this counter.
QString removeStaff(Station &station, const QString &administrator, const StaffMember &member);
