#include "app/Operation.h"

#include "app/Errors.h"
#include "support/CuttingProxy.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// An operation is whole or it is not there, whatever its work does.
class tst_Operation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.exec(u"TRUNCATE tbl_log"_s); }

    void waysOut_data()
    {
        // What the work does in its attempts, one after the other; how often it is called, and what is told.
        drawnRows(uR"(
            done                | done                      | 1 | done
            refused             | false                     | 1 | false
            deadlock            | 1213; done                | 2 | done
            lock time-out       | 1205; done                | 2 | done
            row changed         | 1020; done                | 2 | done
            refused in the end  | 1213; false               | 2 | false
            three conflicts     | 1213; 1205; 1020; done    | 4 | done
            four conflicts      | 1213; 1213; 1213; 1213; done | 4 | Another counter is changing the same just now. Nothing was written; please try again.
            row stands already  | 1062; done                | 1 | error 1062
            beside the deadlock | 1212; done                | 1 | error 1212
            beside the time-out | 1206; done                | 1 | error 1206
            another exception   | odd; done                 | 1 | odd
        )"_s);
    }

    void waysOut()
    {
        const auto [attempts, calls, outcome] = cells<3>();
        TestStation station(m_server);
        Operation operation(station, u"It"_s, {u"one"_s, u"two"_s});
        const QStringList script = listOf(attempts);
        int call = 0;
        QString told;
        try {
            const bool isDone = operation.run([&] {
                operation.execute(u"INSERT INTO tbl_log SET log_do='knock'"_s);
                const QString what = script.value(call++);
                if (what == u"odd")
                    throw std::runtime_error("odd");
                if (const unsigned number = what.toUInt(); number > 0)
                    throw DbError(u"error "_s + what, number);
                return what == u"done";
            });
            told = isDone ? u"done"_s : u"false"_s;
        } catch (const std::exception &error) {
            told = QString::fromUtf8(error.what());
        }
        // The next one on the same connection must not bring to light what was left open.
        QVERIFY(Operation(station, u"Next"_s).run([] { return true; }));
        QCOMPARE(told, outcome);
        QCOMPARE(call, calls.toInt());
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s), QStringList{outcome == u"done" ? u"1"_s : u"0"_s});
        QCOMPARE(m_server.rows(u"SELECT IS_USED_LOCK('one'), IS_USED_LOCK('two')"_s), QStringList{u"NULL|NULL"_s});
    }

    // Somebody else's open transaction holds the row: four waits of a second.
    void rowHeldByAnother()
    {
        m_server.exec(u"INSERT INTO tbl_log SET log_do='here'"_s);
        Database other(m_server.connectionString());
        DbConnection holder(other);
        holder.execute(u"START TRANSACTION"_s);
        holder.execute(u"UPDATE tbl_log SET log_do='held'"_s);
        TestStation station(m_server);
        Operation operation(station, u"It"_s);
        const auto change = [&] {
            operation.execute(u"INSERT INTO tbl_log SET log_do='knock'"_s);
            operation.execute(u"UPDATE tbl_log SET log_do='mine' WHERE log_do='here'"_s);
            return true;
        };
        QVERIFY_EXCEPTION_THROWN(operation.run(change), NotDone);
        QCOMPARE(m_server.rows(u"SELECT log_do FROM tbl_log"_s), QStringList{u"here"_s});
        holder.execute(u"ROLLBACK"_s);
        QVERIFY(operation.run(change));
        QCOMPARE(m_server.rows(u"SELECT log_do FROM tbl_log"_s), QStringList({u"mine"_s, u"knock"_s}));
    }

    // Nothing tells whether it stands, so nothing is asserted.
    void lostWithoutProof()
    {
        CuttingProxy proxy(m_server);
        proxy.cutAt(u"COMMIT"_s, CuttingProxy::Cut::Unanswered);
        ScriptedPrompts prompts;
        Station station(testSettings(proxy.connectionString()), prompts);
        Operation operation(station, u"It"_s);
        try {
            operation.run([&] {
                operation.execute(u"INSERT INTO tbl_log SET log_do='knock'"_s);
                return true;
            });
            QFAIL("Nobody can know that");
        } catch (const NotDone &told) {
            QVERIFY2(
                QString::fromUtf8(told.what()).startsWith(u"It was sent to the database, but the answer was lost"_s),
                told.what());
        }
        QCOMPARE(m_server.rows(u"SELECT log_do FROM tbl_log"_s), QStringList{u"knock"_s});
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Operation)
#include "tst_Operation.moc"
