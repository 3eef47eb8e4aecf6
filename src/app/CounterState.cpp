#include "app/CounterState.h"

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

void SetCounterStaff(Database &database, int counter, const QString &login)
{
    DbConnection connection(database);
    connection.execute(u"UPDATE tbl_system SET sys_counterstaff='"_s + login + u"' where sys_counter ="_s +
                       QString::number(counter));
}

void SetCounterStaffShiftStatus(Database &database, int counter, int status)
{
    DbConnection connection(database);
    connection.execute(u"UPDATE tbl_system SET sys_doclose="_s + QString::number(status) + u" where sys_counter ="_s +
                       QString::number(counter));
}
