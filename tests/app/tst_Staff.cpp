#include "app/Staff.h"

#include "app/ActivityLog.h"
#include "app/CounterState.h"
#include "app/CounterTables.h"
#include "support/DrawnRows.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Who may work at a counter, and the counters' own rows and tables.
class tst_Staff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_staff SET st_login='boss', st_password='Secret1', st_access=1;"
                      "INSERT INTO tbl_staff SET st_login='anna', st_password='pass', st_access=2;"
                      "INSERT INTO tbl_staff SET st_login='O\\'Neil', st_password='a\\'b', st_access=0;"
                      "INSERT INTO tbl_system SET sys_counter=1; INSERT INTO tbl_system SET sys_counter=2"_s);
    }

    void loginTakesTheCounter()
    {
        TestStation station(m_server, {}, 2);
        DbConnection(station.database);
        m_server.startLog();
        QVERIFY(logIn(station, u"anna"_s, u"pass"_s));
        QCOMPARE(m_server.takeLog(),
                 QStringList({u"SELECT *  from tbl_staff where st_login ='anna' AND st_password='pass'"_s,
                              u"UPDATE tbl_system SET sys_counterstaff='anna' where sys_counter =2"_s,
                              u"INSERT INTO tbl_log SET log_counter= 2, log_staffname='anna', "
                              "log_datetime='2026-11-14 14:59:59', log_do='logging in'"_s,
                              u"UPDATE tbl_staff SET st_lastlogin='2026-11-14 14:59:59' WHERE st_login='anna'"_s}));
        QCOMPARE(station.CurrentStaff, u"anna"_s);
    }

    void credentials_data()
    {
        // Which of the checks lets them in: the login, the administrator's, and what the verification says.
        drawnRows(uR"(
            admin                     | boss              | Secret1            | yes yes admin
            staff                     | anna              | pass               | yes no staff
            case of the password      | boss              | secret1            | no no nobody
            case of the login         | Boss              | Secret1            | no no nobody
            somebody else's           | anna              | Secret1            | no no nobody
            empty                     |                   |                    | no no nobody
            escaped where it is typed | O'Neil            | a'b                | error error staff
            or in the password        | boss              | ' OR ''='          | no no nobody
            or in both                | ' OR ''='         | ' OR ''='          | no no nobody
            comment                   | boss              | \' OR 1=1 -- -     | no no nobody
            comment in both           | \' OR 1=1 -- -    | \' OR 1=1 -- -     | no no nobody
            backslash in the login    | \                 | OR 1=1 -- -        | no no nobody
            union                     | boss              | ' UNION SELECT 1,'boss','x',1,NULL -- - | no no nobody
        )"_s);
    }

    void credentials()
    {
        const auto row = cells<3>();
        const QString &login = row[0];
        const QString &password = row[1];
        // Also where an older database compares without regard to case.
        m_server.exec(u"ALTER TABLE tbl_staff CONVERT TO CHARACTER SET utf8mb4 COLLATE utf8mb4_general_ci"_s);
        TestStation station(m_server);
        const auto verdictOf = [](auto check) {
            try {
                return QString(check());
            } catch (const DbError &) {
                return u"error"_s;
            }
        };
        const QStringList found{
            verdictOf([&] { return logIn(station, login, password) ? u"yes"_s : u"no"_s; }),
            verdictOf([&] { return isAdministrator(station.database, login, password) ? u"yes"_s : u"no"_s; }),
            verdictOf([&] {
                const auto staff = findStaff(station.database, login, password);
                if (staff && staff->staffName != login)
                    return u"somebody else"_s;
                return !staff ? u"nobody"_s : staff->isAdmin() ? u"admin"_s : u"staff"_s;
            })};
        QCOMPARE(found.join(u' '), row[2]);
        QCOMPARE(station.CurrentStaff, found[0] == u"yes" ? login : QString());
    }

    void cleaning()
    {
        QCOMPARE(cleanCredential(u"/09:@AZ[`az{ o'N e\"i l äé٣Ωx !?-'"_s), u"09AZazoNeilx"_s);
        QCOMPARE(cleanCredential(u"!?-'"_s), QString());
    }

    void logThatFailsStopsNothing()
    {
        TestStation station(
            m_server, {u"error: Error while writing to log files"_s, u"error: Error while writing to log files"_s});
        WriteActivityLog(station, u"O'Neil"_s, u"log out"_s);
        m_server.stop();
        WriteActivityLog(station, u"anna"_s, u"log out"_s);
        m_server.start();
        WriteActivityLog(station, u"anna"_s, u"Cash Collected 250"_s);
        QCOMPARE(m_server.rows(u"SELECT log_staffname, log_do FROM tbl_log"_s),
                 QStringList{u"anna|Cash Collected 250"_s});
    }

    void counterState()
    {
        Database database(m_server.connectionString());
        SetCounterStaff(database, 1, u"anna"_s);
        SetCounterStaffShiftStatus(database, 2, 1);
        m_server.startLog();
        QCOMPARE(GetCounterStaff(database, 1), u"anna"_s);
        QCOMPARE(GetCounterStaff(database, 7), QString());
        SetCounterStaffShiftStatus(database, 1, 0);
        QCOMPARE(m_server.takeLog(), QStringList({u"SELECT * from tbl_system where sys_counter =1"_s,
                                                  u"SELECT * from tbl_system where sys_counter =7"_s,
                                                  u"UPDATE tbl_system SET sys_doclose=0 where sys_counter =1"_s}));
        QCOMPARE(m_server.rows(u"SELECT sys_counter, sys_doclose, sys_counterstaff FROM tbl_system ORDER BY 1"_s),
                 QStringList({u"1|0|anna"_s, u"2|1|"_s}));
    }

    void specialGroupTables()
    {
        m_server.exec(u"CREATE TABLE tbl_specialgroup5 LIKE tbl_specialgroup1; DROP TABLE tbl_specialgroup2;"
                      "CREATE TABLE tbl_specialgroup30 LIKE tbl_specialgroup1"_s);
        Database database(m_server.connectionString());
        QString groups;
        for (int group = 1; group <= 5; ++group)
            if (SpecialGroupTableExists(database, group))
                groups += QString::number(group);
        QCOMPARE(groups, u"15"_s);
    }

    void tablesOfNewCounters()
    {
        m_server.exec(u"TRUNCATE tbl_system; CREATE TABLE tbl_shift2 LIKE tbl_shift1"_s);
        ScriptedPrompts prompts({u"error: Error while loading form"_s});
        Database database(m_server.connectionString());
        m_server.stop();
        CreateCounterTables(database, prompts, 3);
        m_server.start();
        QCOMPARE(countersOf(u"tbl_counter"_s), QStringList{u"1"_s});
        for (int time = 0; time < 2; ++time) {
            CreateCounterTables(database, prompts, 3);
            for (const QString &kind : {u"tbl_counter"_s, u"tbl_shift"_s, u"tbl_booking_clipboard"_s})
                QCOMPARE(countersOf(kind), QStringList({u"1"_s, u"2"_s, u"3"_s}));
            QCOMPARE(m_server.rows(u"SELECT sys_counter, sys_counteractive, sys_doclose FROM tbl_system ORDER BY 1"_s),
                     QStringList({u"1|1|0"_s, u"2|1|0"_s, u"3|1|0"_s}));
        }
        const QString columns = u"SELECT column_name, column_type, column_default, column_key, extra "
                                "FROM information_schema.columns WHERE table_schema='posdb' AND table_name='%1' "
                                "ORDER BY ordinal_position"_s;
        for (const QString &kind : {u"tbl_counter"_s, u"tbl_shift"_s, u"tbl_booking_clipboard"_s})
            QCOMPARE(m_server.rows(QString(columns).arg(kind + u'3')),
                     m_server.rows(QString(columns).arg(kind + u'1')));

        // Rows that stand already, whatever their counter, are left as they are.
        m_server.exec(u"DELETE FROM tbl_system WHERE sys_counter<>2; UPDATE tbl_system SET sys_doclose=1"_s);
        CreateCounterTables(database, prompts, 1);
        QCOMPARE(m_server.rows(u"SELECT sys_counter, sys_doclose FROM tbl_system"_s), QStringList{u"2|1"_s});
        // A row belongs to the counter's sales table, not to its other two.
        m_server.exec(u"CREATE TABLE tbl_counter4 LIKE tbl_counter1"_s);
        CreateCounterTables(database, prompts, 5);
        QCOMPARE(countersOf(u"tbl_shift"_s).size(), 5);
        QCOMPARE(m_server.rows(u"SELECT sys_counter FROM tbl_system ORDER BY 1"_s), QStringList({u"2"_s, u"5"_s}));
    }

    void tablesOfManyCounters()
    {
        ScriptedPrompts prompts;
        Database database(m_server.connectionString());
        // The server lists tbl_counter10 before tbl_counter2, so the second time finds 9 and fails at what stands
        // already.
        for (const int counterCount : {11, 12}) {
            CreateCounterTables(database, prompts, counterCount);
            QCOMPARE(countersOf(u"tbl_booking_clipboard"_s).size(), counterCount);
            QCOMPARE(countersOf(u"tbl_counter"_s).last(), QString::number(counterCount));
            QCOMPARE(m_server.rows(u"SELECT COUNT(*), MAX(sys_counter) FROM tbl_system"_s),
                     QStringList{QString::number(counterCount) + u'|' + QString::number(counterCount)});
        }
        // One pattern is missing: the others serve.
        m_server.exec(u"DROP TABLE tbl_shift1"_s);
        CreateCounterTables(database, prompts, 13);
        QCOMPARE(countersOf(u"tbl_counter"_s).size(), 13);
        QCOMPARE(countersOf(u"tbl_booking_clipboard"_s).size(), 13);
    }

private:
    QStringList countersOf(const QString &kind) const
    {
        return m_server.rows(u"SELECT REPLACE(table_name, '"_s + kind +
                             u"', '') AS n FROM information_schema.tables WHERE table_schema='posdb' AND table_name "
                             "REGEXP '^"_s +
                             kind + u"[0-9]+$' ORDER BY n+0"_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Staff)
#include "tst_Staff.moc"
