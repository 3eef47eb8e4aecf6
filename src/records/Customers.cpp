#include "records/Customers.h"

#include "app/RateType.h"
#include "app/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

struct Register
{
    QString table;
    const char *name;
    const char *organisation;
    const char *telephone;
    QString numberColumn;
    QString rateType;
};

std::optional<Booker> find(Database &database, const Register &customers, const QString &number)
{
    if (number.size() < shortestCustomerNumber)
        return std::nullopt;
    DbConnection connection(database);
    DbRows rows = connection.query(
        sql(u"SELECT * FROM %1 WHERE %2='%3'"_s, customers.table, customers.numberColumn, quoted(number)));
    std::optional<Booker> found;
    while (rows.next())
        found = Booker{rows.text(customers.name), rows.text(customers.organisation), rows.text(customers.telephone),
                       customers.rateType};
    return found;
}

} // namespace

std::optional<Booker> findMember(Database &database, const QString &number)
{
    return find(database, {u"tbl_member"_s, "m_name", "m_org", "m_tel", u"m_idno"_s, RateType::member}, number);
}

std::optional<Booker> findStudent(Database &database, const QString &number)
{
    return find(database, {u"tbl_student"_s, "st_name", "st_org", "st_tel", u"st_idno"_s, RateType::student}, number);
}

std::optional<Booker> findGroupMember(Database &database, int group, const QString &number)
{
    const QString table = u"tbl_specialgroup"_s + QString::number(group);
    return find(database, {table, "m_name", "m_org", "m_tel", u"m_idno"_s, RateType::specialGroup(1)}, number);
}
