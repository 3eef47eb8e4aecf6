#include "support/Check.h"
#include "support/CuttingProxy.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

/// The connection is lost at the n-th statement, for every n, before the server heard of it and after: what is left is
/// nothing or the whole, staff are told which, and trying again does what it should.
class tst_Breaks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyStatement_data()
    {
        // What stands before, and the deed.
        drawnRows(uR"(
            book a whole      |                                       | book 18:00 3 Whole
            book a half       | book 18:00 4 Left                     | book 18:00 5 Right
            clear a whole     | book 18:00 3 Whole                    | clear 18:00 3 Whole
            clear a half      | book 18:00 4 Left; book 18:00 5 Right | clear 18:00 5 Right
            extra time        | book 18:00 3 Whole                    | extra 18:00 3 Whole
            no extra time     | book 18:00 3 Whole; extra 18:00 3 Whole | noextra 18:00 3 Whole
            rate              | book 18:00 8 Smith                    | rate 18:00 8 Smith
            plain             |                                       | book 18:00 8 Smith
            sale              | book 18:00 8 Smith                    | sell 18:00 8 Smith
            paste             | wait 18:00 7 W; cut                          | paste 18:00 8
        )"_s);
    }

    void everyStatement()
    {
        const auto [standing, deed] = cells<2>();
        CuttingProxy proxy(m_server);
        DeedCounter counter(proxy.connectionString());
        prepare(counter, standing);
        const QStringList before = tables();
        proxy.pass();
        QCOMPARE(counter.act(deed), u"done"_s);
        const QStringList whole = tables();
        const QStringList statements = proxy.statements();
        QVERIFY(statements.contains(u"COMMIT"_s));
        for (const auto cut : {CuttingProxy::Cut::Unsent, CuttingProxy::Cut::Unanswered}) {
            for (int n = 1; n <= statements.size() && !QTest::currentTestFailed(); ++n) {
                proxy.pass();
                prepare(counter, standing);
                QCOMPARE(tables(), before);
                proxy.cutAt(n, cut);
                const QString words = counter.act(deed);
                const bool committed = n > statements.indexOf(u"COMMIT"_s) + (cut == CuttingProxy::Cut::Unsent ? 1 : 0);
                const QByteArray where = statements[n - 1].toUtf8() + " -> " + words.toUtf8();
                QVERIFY2(words.startsWith(committed ? u"done" : u"failed: "), where);
                const QStringList told = counter.takeTold();
                const bool atCommit = statements[n - 1] == u"COMMIT";
                const bool atLog = statements[n - 1].startsWith(u"INSERT INTO tbl_log"_s);
                QCOMPARE(told.size(), committed && (atCommit || atLog) ? 1 : 0);
                if (atCommit)
                    QVERIFY2(
                        (committed ? told[0] : words).contains(committed ? u" was recorded" : u" was not recorded"),
                        where);
                QVERIFY2(tables() == (committed ? whole : before), where);
                if (!committed)
                    QCOMPARE(counter.act(deed), u"done"_s);
                QCOMPARE(tables(), whole);
                QCOMPARE(findings(m_server), QStringList());
            }
        }
    }

    void nobodyCanKnow()
    {
        for (const auto cut : {CuttingProxy::Cut::Unsent, CuttingProxy::Cut::Unanswered}) {
            m_server.freshDatabase();
            CuttingProxy proxy(m_server);
            DeedCounter counter(proxy.connectionString());
            proxy.cutAt(u"COMMIT"_s, cut, true);
            const QString words = counter.act(u"book 18:00 3 Whole"_s);
            QVERIFY2(
                words.startsWith(u"failed: The booking of Field 4, Saturday 14 November 2026, 18:00 was sent to the "
                                 "database, but the answer was lost"_s),
                qPrintable(words));
            QCOMPARE(counter.takeTold(), QStringList());
            // Afterwards it is seen what became of it.
            proxy.pass();
            const bool stands = cut == CuttingProxy::Cut::Unanswered;
            QCOMPARE(counter.act(u"book 18:00 3 Whole"_s), stands ? u"The field already being booked"_s : u"done"_s);
            QCOMPARE(findings(m_server), QStringList());
        }
    }

    // A server that went down hard gives numbers again that no row came to keep.
    void numberOfAnother()
    {
        m_server.freshDatabase();
        CuttingProxy proxy(m_server);
        proxy.cutAt(u"COMMIT"_s, CuttingProxy::Cut::Unsent, true);
        QString words;
        const std::unique_ptr<QThread> counter(
            QThread::create([&] { words = DeedCounter(proxy.connectionString()).act(u"book 18:00 8 Smith"_s); }));
        counter->start();
        QTRY_VERIFY(proxy.statements().contains(u"COMMIT"_s));
        QTRY_COMPARE(m_server.rows(u"SELECT trx_id FROM information_schema.innodb_trx"_s), QStringList());
        m_server.exec(u"ALTER TABLE tbl_remark AUTO_INCREMENT=1"_s);
        QCOMPARE(DeedCounter(m_server.connectionString(), 2).act(u"book 18:00 7 Jones"_s), u"done"_s);
        QCOMPARE(m_server.rows(u"SELECT m_id, m_field FROM tbl_remark"_s), QStringList{u"1|7"_s});
        proxy.pass();
        counter->wait();
        QVERIFY2(words.contains(u" was not recorded"_s), qPrintable(words));
    }

private:
    void prepare(DeedCounter &counter, const QString &standing)
    {
        m_server.exec(u"TRUNCATE tbl_booking; TRUNCATE tbl_remark; TRUNCATE tbl_waitlist; "
                      "TRUNCATE tbl_counter1; REPLACE tbl_item SET i_id=1, i_name='Cola', i_currentstock=9"_s);
        counter.actAll(standing);
    }

    [[nodiscard]] QStringList tables() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_shared, b_extratime, b_specialrate, b_paid "
                             "FROM tbl_booking ORDER BY b_id"_s) +
               m_server.rows(u"SELECT m_datetime, m_field, m_remark, m_job, m_staff FROM tbl_remark ORDER BY m_id"_s) +
               m_server.rows(u"SELECT w_bookername FROM tbl_waitlist UNION ALL SELECT i_currentstock FROM tbl_item"_s) +
               m_server.rows(u"SELECT c_transaction, c_item, c_itemtotal FROM tbl_counter1 ORDER BY c_id"_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Breaks)
#include "tst_Breaks.moc"
