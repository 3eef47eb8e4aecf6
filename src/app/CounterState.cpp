#include "app/CounterState.h"

#include "app/SqlText.h"

using namespace Qt::StringLiterals;

QString GetCounterStaff(Database &database, int counter)
{
    DbConnection connection(database);
    DbRows rows = connection.query(u"SELECT * from tbl_system where sys_counter ="_s + QString::number(counter));
    QString staff;
    while (rows.next())
        staff = rows.text("sys_counterstaff");
    return staff;
}

QString counterStaffStatement(int counter, const QString &login)
{
    return sql(u"UPDATE tbl_system SET sys_counterstaff='%1' where sys_counter =%2"_s, login, counter);
}

QString counterShiftStatement(int counter, int status)
{
    return sql(u"UPDATE tbl_system SET sys_doclose=%1 where sys_counter =%2"_s, status, counter);
}

void SetCounterStaff(Database &database, int counter, const QString &login)
{
    DbConnection connection(database);
    connection.execute(counterStaffStatement(counter, login));
}

void SetCounterStaffShiftStatus(Database &database, int counter, int status)
{
    DbConnection connection(database);
    connection.execute(counterShiftStatement(counter, status));
}
