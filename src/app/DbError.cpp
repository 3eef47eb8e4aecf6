#include "app/DbError.h"

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned lostConnection = 2013;

bool carriesPassword(const QString &statement)
{
    return statement.contains(u"st_password"_s, Qt::CaseInsensitive);
}

// The server's text quotes the statement from where it stumbled, and so may quote the password.
QString withoutSecrets(const QString &text, unsigned number, const QString &statement)
{
    if (!carriesPassword(statement))
        return text;
    return u"The login and password could not be checked: error %1 of the database server."_s.arg(number);
}

} // namespace

DbError::DbError(const QString &text, unsigned number, const QString &statement)
    : std::runtime_error(withoutSecrets(text, number, statement).toStdString()),
      m_number(number),
      m_statement(carriesPassword(statement) ? u"(a statement with a password is not shown)"_s : statement)
{
}

GivenUp::GivenUp(const QString &statement)
    : DbError(u"The database server did not answer, and the wait was given up"_s, lostConnection, statement)
{
}
