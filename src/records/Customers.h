#pragma once

#include "app/Database.h"
#include "records/Booker.h"

#include <optional>

/// The registers of customers who book at their own rate. A number shorter than shortestCustomerNumber is not looked
/// up; a number that nobody has gives nothing; of several rows the last one counts. All throw DbError.
inline constexpr int shortestCustomerNumber = 7;

/// By tbl_member.m_idno; the rate type is "member".
std::optional<Booker> findMember(Database &database, const QString &number);
/// By tbl_student.st_idno; the rate type is "student".
std::optional<Booker> findStudent(Database &database, const QString &number);
/// By m_idno of the group's own table; the rate type is "specialgroup1" whichever the group.
std::optional<Booker> findGroupMember(Database &database, int group, const QString &number);
