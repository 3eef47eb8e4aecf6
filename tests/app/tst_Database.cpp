#include "app/Database.h"

#include "app/Errors.h"
#include "app/HostAddresses.h"
#include "app/SqlText.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

/// The one connection under all operations, and the schema's promises.
class tst_Database : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_database = std::make_unique<Database>(m_server.connectionString());
    }

    void optionsOfTheConnectionString()
    {
        const auto options = ConnectionOptions::parse(
            u"DRIVER={MySQL ODBC 3.51 Driver};SERVER=db.centre;DATABASE=posdb;UID=anna;PWD=a=b' c;OPTION=18475"_s);
        QCOMPARE((QStringList{options.server, options.database, options.user, options.password}).join(u'|'),
                 u"db.centre|posdb|anna|a=b' c"_s);
        QCOMPARE(options.option, 18475U);
    }

    void quotes()
    {
        QString value = u"O'Neil ''a' \\ \" %1 ` \n"_s;
        QCOMPARE(EscapeQuotes(value), u"O\\'Neil \\'\\'a\\' \\ \" %1 ` \n"_s);
        QCOMPARE(value, u"O\\'Neil \\'\\'a\\' \\ \" %1 ` \n"_s);
    }

    void rowsAreReadByName()
    {
        m_server.exec(
            u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 24:00:00', b_field=3, b_bookername='اَلْفَرِيق 😀 ½',"
            "b_paid=12.5; INSERT INTO tbl_staff SET st_login='anna'"_s);
        DbConnection connection(*m_database);
        DbRows rows = connection.query(u"SELECT * FROM tbl_booking WHERE b_datetime=\"2026-11-14 24:00:00\""_s);
        QCOMPARE(rows.size(), 1);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(rows.text("b_field")), DbError);
        QVERIFY(rows.next());
        QCOMPARE(rows.text("B_BookerName"), u"اَلْفَرِيق 😀 ½"_s);
        QCOMPARE(rows.number("b_field"), 3);
        QCOMPARE(rows.amount("b_paid"), 12.5);
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(rows.text("b_colour")), DbError);
        QVERIFY(!rows.next());

        DbRows staff = connection.query(u"SELECT * FROM tbl_staff"_s);
        QVERIFY(staff.next());
        QCOMPARE(staff.text("st_lastlogin"), QString());
        QCOMPARE(connection.query(u"SELECT * FROM tbl_staff WHERE st_login='Anna'"_s).size(), 0);
    }

    void oneStatementAtATime()
    {
        DbConnection connection(*m_database);
        QVERIFY_EXCEPTION_THROWN(connection.execute(u"SELECT 1; DELETE FROM tbl_staff"_s), DbError);
        connection.execute(u"SHOW TABLES;"_s);
        DbRows tables = connection.query(u"show tables;"_s);
        QVERIFY(tables.next());
        QCOMPARE(tables.text("Tables_in_posdb"), u"tbl_booking"_s);
    }

    // Numbers come as text, also an empty one, and the highest is the highest number.
    void numbersInTheTables()
    {
        DbConnection connection(*m_database);
        for (const QString &number : {u"9"_s, u"10"_s}) {
            connection.execute(
                u"INSERT INTO tbl_counter1 SET c_itemprice='60', c_itemquantity='1.5', c_itemtotal='90.00', "
                "c_transaction='"_s +
                number + u"', c_receipt='"_s + number + u"'"_s);
            connection.execute(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 10:00:00', b_field="_s + number +
                               u", b_invoice='"_s + number + u"'"_s);
        }
        connection.execute(u"INSERT INTO tbl_counter1 SET c_receipt=''"_s);
        QCOMPARE(m_server.rows(u"SELECT MAX(c_transaction), MAX(c_receipt), MIN(c_receipt), MAX(c_itemprice), "
                               "MAX(c_itemquantity), MAX(c_itemtotal), (SELECT MAX(b_invoice) FROM tbl_booking) "
                               "FROM tbl_counter1"_s),
                 QStringList{u"10|10|0|60.00|1.5|90.00|10"_s});
    }

    void restartGoesUnnoticed()
    {
        const QString insert = u"INSERT INTO tbl_log SET log_do='knock'"_s;
        DbConnection(*m_database).execute(insert);
        m_server.stop();
        m_server.start();
        DbConnection(*m_database).execute(insert);
        m_server.cutConnections();
        DbConnection(*m_database).execute(insert);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s), QStringList{u"3"_s});
        // A connection opened again speaks as the first one did.
        DbConnection(*m_database).execute(u"INSERT INTO tbl_log SET log_counter='', log_do=\"😀\""_s);
        QCOMPARE(m_server.rows(u"SELECT log_do FROM tbl_log WHERE log_counter=0 AND log_do<>'knock'"_s),
                 QStringList{u"😀"_s});
    }

    // Asking costs as much as a small statement, so only a connection that was silent for long is asked.
    void isAskedOnlyAfterASilence()
    {
        const auto pings = [this] {
            return m_server.rows(u"SHOW GLOBAL STATUS LIKE 'Com_admin_commands'"_s).first().section(u'|', 1).toInt();
        };
        DbConnection(*m_database).execute(u"DO 0"_s);
        const int before = pings();
        QTest::qWait(4000);
        DbConnection(*m_database).execute(u"DO 0"_s);
        QCOMPARE(pings(), before);
        QTest::qWait(5100);
        for (int i = 0; i < 2; ++i)
            DbConnection(*m_database).execute(u"DO 0"_s);
        QCOMPARE(pings(), before + 1);
    }

    void lossInTheMiddleOfAnOperation()
    {
        DbConnection operation(*m_database);
        operation.execute(u"INSERT INTO tbl_log SET log_do='one'"_s);
        m_server.cutConnections();
        QVERIFY_EXCEPTION_THROWN(operation.execute(u"INSERT INTO tbl_log SET log_do='two'"_s), DbError);
        QVERIFY_EXCEPTION_THROWN(operation.execute(u"INSERT INTO tbl_log SET log_do='three'"_s), DbError);
        DbConnection(*m_database).execute(u"INSERT INTO tbl_log SET log_do='four'"_s);
        QCOMPARE(m_server.rows(u"SELECT log_do FROM tbl_log"_s), QStringList({u"one"_s, u"four"_s}));
    }

    void lostStatementIsNotSentAgain()
    {
        // The table keeps the first row of a statement that is ended while it makes the second one.
        m_server.exec(u"CREATE TABLE kept (a INT) ENGINE=MyISAM"_s);
        const QString sql = u"INSERT INTO kept VALUES (1), (SLEEP(20))"_s;
        DbConnection connection(*m_database);
        m_server.startLog();
        const std::unique_ptr<QThread> cutter(QThread::create([this] {
            while (m_server.rows(u"SELECT 1 FROM information_schema.processlist WHERE state='User sleep'"_s).isEmpty())
                QThread::msleep(5);
            m_server.cutConnections();
        }));
        cutter->start();
        QVERIFY_EXCEPTION_THROWN(connection.execute(sql), DbError);
        cutter->wait();
        DbConnection(*m_database).execute(u"SET @a = 1"_s);
        QCOMPARE(m_server.takeLog(), QStringList({sql, u"SET @a = 1"_s}));
        QCOMPARE(m_server.rows(u"SELECT a FROM kept"_s), QStringList{u"1"_s});
    }

    // A login or password that ends in a backslash lets the server quote the other one in its error.
    void namesOfServers()
    {
        for (const QString &address : {u"127.0.0.1"_s, u"::1"_s})
            QVERIFY(HostAddresses::isAddress(address));
        QVERIFY(!HostAddresses::isAddress(u"localhost"_s));
        const QStringList here = HostAddresses::lookUp(u"localhost"_s);
        QVERIFY(here.contains(u"127.0.0.1"_s) || here.contains(u"::1"_s));
        Database nowhere(u"SERVER=nowhere.invalid;DATABASE=posdb"_s);
        QVERIFY_THROWS_EXCEPTION(DbError, DbConnection{nowhere});
        QVERIFY(!nowhere.isReachable());
    }

    void errorsKeepSecrets()
    {
        for (const QString &statement :
             {u"UPDATE tbl_staff SET st_password='it\\'s secret' WHER st_login='anna'"_s,
              u"SELECT * from tbl_staff where st_login ='anna\\' AND st_password='secret'"_s}) {
            try {
                DbConnection(*m_database).execute(statement);
                QFAIL("A statement that is none went through");
            } catch (const DbError &error) {
                QCOMPARE(error.number(), 1064U);
                const QString told = error.statement() + QString::fromUtf8(error.what());
                QVERIFY2(!told.contains(u"secret"_s), qPrintable(told));
                QVERIFY2(told.contains(u"error 1064"_s), qPrintable(told));
            }
        }
    }

    void errorWindow()
    {
        // In the order of their codes.
        const QStringList messages =
            u"Unknown Error|Database server cannot be found when trying to login to the system|"
            "Error while writing to log files|Error while accessing database|Unknown Error|"
            "Error while loading form|Unknown Error"_s.split(u'|');
        for (int code = 0; code < messages.size(); ++code) {
            ScriptedPrompts prompts({u"error: "_s + messages[code]});
            QVERIFY(!guarded(prompts, ErrorCode(code), [] { throw DbError(u"no such table"_s, 1146, u"SELECT x"_s); }));
            const QString description = prompts.errorDescription();
            QVERIFY2(description.startsWith(u"no such table\r\n\r\nSource : "_s) && description.endsWith(u"\r\n\r\n"_s),
                     qPrintable(description));
            QVERIFY(guarded(prompts, ErrorCode(code), [] {}));
        }
    }

private:
    PrivateServer m_server;
    std::unique_ptr<Database> m_database;
};

QTEST_GUILESS_MAIN(tst_Database)
#include "tst_Database.moc"
