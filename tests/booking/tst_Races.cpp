#include "support/Check.h"
#include "support/CuttingProxy.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString taken = u"The field already being booked"_s;

/// One counter on a thread of its own; does its deeds one after the other.
class CounterThread
{
public:
    CounterThread(const QString &connectionString, int number, const QStringList &pairs, const QStringList &before,
                  const QStringList &deeds)
        : m_thread(QThread::create([=, this] {
              DeedCounter counter(connectionString, number, pairs);
              for (const QString &deed : before)
                  counter.act(deed);
              for (const QString &deed : deeds)
                  m_words << counter.act(deed);
          }))
    {
        m_thread->start();
    }
    CounterThread(const CounterThread &) = delete;
    CounterThread &operator=(const CounterThread &) = delete;
    ~CounterThread() { m_thread->wait(); }

    [[nodiscard]] bool isFinished() const { return m_thread->isFinished(); }
    QStringList words()
    {
        m_thread->wait();
        return m_words;
    }

private:
    QStringList m_words;
    std::unique_ptr<QThread> m_thread;
};

} // namespace

/// Two counters at the same ground at the same moment: the first one is held in the middle of its operation, between
/// what it looked at and what it writes, until the second one is through or waits. Every race is run again with its
/// guard off, and must then do the damage that it is about.
class tst_Races : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void race_data()
    {
        // What stands before; where the first counter is held; what both do; how the guard is taken away: with a pair
        // more in one counter's settings the ground has another name there, and MyISAM knows neither transactions nor
        // locks of rows, and without its key a slot takes two bookers; what both say, the damage, as a fault of the
        // check or a statement that gives a row for it.
        drawnRows(uR"(
            whole, then half  |  | INSERT INTO tbl_booking | book 18:00 3 Whole | book 18:00 4 Half  | 5&1 | done; taken | two bookers on the same ground
            half, then whole  |  | INSERT INTO tbl_booking | book 18:00 4 Half  | book 18:00 3 Whole | 5&1 | done; taken | two bookers on the same ground
            one slot          |  | INSERT INTO tbl_booking | book 18:00 8 Smith | book 18:00 8 Jones | unkeyed | taken; done | two bookers in one slot
            two halves        |  | INSERT INTO tbl_booking | book 18:00 4 Left  | book 18:00 5 Right | 4&1 | done; done | counts wrong
            clear two halves  | book 18:00 4 Left; book 18:00 5 Right | UPDATE tbl_booking SET b_shared | clear 18:00 4 Left | clear 18:00 5 Right | 4&1 | done; done | counts wrong
            clear one twice   | book 18:00 4 Left; book 18:00 5 Right | DELETE FROM tbl_booking | clear 18:00 4 Left | clear 18:00 4 Left | 5&1 MyISAM | done; The field is empty | without the Partially Shared row
            clear and rebook  | book 18:00 8 Smith | DELETE FROM tbl_booking | clear 18:00 8 Smith | clear 18:00 8 Smith; book 18:00 8 Jones | MyISAM | done; The field is empty; done | SELECT 1 FROM tbl_booking RIGHT JOIN (SELECT 1) AS one ON b_bookername='Jones' WHERE b_id IS NULL
            extra and rebook  | book 18:00 8 Smith | UPDATE tbl_booking SET b_extratime | extra 18:00 8 Smith | clear 18:00 8 Smith; book 18:00 8 Jones | MyISAM | done; done; done | SELECT 1 FROM tbl_booking WHERE b_bookername='Jones' AND b_extratime>0
            rate and rebook   | book 18:00 8 Smith | UPDATE tbl_booking SET b_specialrate | rate 18:00 8 Smith | clear 18:00 8 Smith; book 18:00 8 Jones | MyISAM | done; done; done | SELECT 1 FROM tbl_booking WHERE b_bookername='Jones' AND b_specialrate='member'
            paste twice       | wait 18:00 7 W | INSERT INTO tbl_booking | paste 18:00 7 | paste 18:00 8 | MyISAM | done; gone | SELECT 1 FROM tbl_booking HAVING COUNT(*)>1
            extra, then whole | book 18:00 4 Half | UPDATE tbl_booking SET b_extratime | extra 18:00 4 Half | book 19:00 3 Whole | 5&1 | done; taken | extra time into ground
            whole, then extra | book 18:00 4 Half | INSERT INTO tbl_booking | book 19:00 3 Whole | extra 18:00 4 Half | 5&1 | done; taken | extra time into ground
            extra, then half  | book 18:00 3 Whole | UPDATE tbl_booking SET b_extratime | extra 18:00 3 Whole | book 19:00 4 Half | 5&1 | done; taken | extra time into ground
            plain, extra first | book 18:00 8 Smith | INSERT INTO tbl_remark | extra 18:00 8 Smith | book 19:00 8 Next | 6&8 7&8 | one | extra time into ground
            sold twice        | book 18:00 8 Smith | UPDATE tbl_booking SET b_paid | sell 18:00 8 Smith | sell 18:00 8 Smith | MyISAM | done; Field 9 18:00 was paid at another counter | SELECT 1 FROM (SELECT c_item FROM tbl_counter1 UNION ALL SELECT c_item FROM tbl_counter2) AS sold WHERE c_item LIKE 'Field%' HAVING COUNT(*)>1
            sold and cleared  | book 18:00 8 Smith | UPDATE tbl_booking SET b_paid | sell 18:00 8 Smith | clear 18:00 8 Smith | MyISAM | done; You cannot delete paid item | SELECT 1 FROM tbl_booking HAVING COUNT(*)=0
            cleared and sold  | book 18:00 8 Smith | DELETE FROM tbl_booking | clear 18:00 8 Smith | sell 18:00 8 Smith | MyISAM | done; Field 9 18:00 is no longer booked | SELECT 1 FROM tbl_counter2
            extended and sold | book 18:00 8 Smith | UPDATE tbl_booking SET b_extratime | extra 18:00 8 Smith | sell 18:00 8 Smith | MyISAM | done; Field 9 18:00 has other extra time by now: 30 minutes | SELECT 1 FROM tbl_counter2
            plain, booking first | book 18:00 8 Smith | INSERT INTO tbl_remark | book 19:00 8 Next | extra 18:00 8 Smith | 6&8 7&8 | one | extra time into ground
        )"_s);
    }

    void race()
    {
        const auto [standing, held, first, second, off, words, damage] = cells<7>();
        for (const bool guarded : {true, false}) {
            m_server.freshDatabase();
            prepare(standing);
            if (!guarded && off.contains(u"MyISAM"_s))
                m_server.exec(u"ALTER TABLE tbl_booking DROP KEY grid_of_field, ENGINE=MyISAM;"
                              "ALTER TABLE tbl_waitlist ENGINE=MyISAM; ALTER TABLE tbl_remark ENGINE=MyISAM;"
                              "ALTER TABLE tbl_counter1 ENGINE=MyISAM; ALTER TABLE tbl_counter2 ENGINE=MyISAM"_s);
            if (!guarded && off == u"unkeyed")
                m_server.exec(u"ALTER TABLE tbl_booking DROP KEY slot_of_one_booker"_s);
            const QStringList more = guarded ? QStringList() : off.split(u' ').filter(u"&"_s);
            const QStringList here = more.size() > 1 ? QStringList{more[0]} : QStringList();
            const QStringList there = more.isEmpty() ? QStringList() : QStringList{more.last()};
            const QStringList said = run(held, {first, here}, {second, there});
            if (guarded) {
                compare(said, words);
                QCOMPARE(found(damage), QStringList());
                QCOMPARE(findings(m_server), QStringList());
            } else {
                QVERIFY2(!found(damage).isEmpty(), "The guard was off, and no harm was done: this is no race");
            }
        }
    }

    // The grid of the second counter still shows Smith.
    void changedMeanwhile_data()
    {
        // What happened to the hour, and what the deeds upon Smith come to.
        drawnRows(uR"(
            clear, rebooked    | rebook | clear   | This hour has changed meanwhile: Jones
            extra, rebooked    | rebook | extra   | This hour has changed meanwhile: Jones
            no extra, rebooked | rebook | noextra | This hour has changed meanwhile: Jones
            rate, rebooked     | rebook | rate    | This hour has changed meanwhile: Jones
            clear, marked      | UPDATE tbl_booking SET b_bookername='Shared Booking' | clear | This hour has changed meanwhile: Shared Booking
            clear, paid        | UPDATE tbl_booking SET b_paid=0.01 | clear   | You cannot delete paid item
            extra, paid        | UPDATE tbl_booking SET b_paid=0.01 | extra   | The slot already paid
            no extra, paid     | UPDATE tbl_booking SET b_paid=0.01 | noextra | You cannot delete paid slot
            rate, paid         | UPDATE tbl_booking SET b_paid=0.01 | rate    | The slot already paid
            clear, free        | DELETE FROM tbl_booking | clear   | The field is empty
            extra, free        | DELETE FROM tbl_booking | extra   | done
            no extra, free     | DELETE FROM tbl_booking | noextra | done
            rate, free         | DELETE FROM tbl_booking | rate    | This hour has changed meanwhile: it is free now
        )"_s);
    }

    void changedMeanwhile()
    {
        const auto [change, deed, words] = cells<3>();
        prepare(u"book 18:00 8 Smith"_s);
        if (change == u"rebook")
            prepare(u"clear 18:00 8 Smith; book 18:00 8 Jones"_s);
        else
            m_server.exec(change);
        const QStringList before = tables();
        DeedCounter counter(m_server.connectionString());
        QCOMPARE(counter.act(deed + u" 18:00 8 Smith"_s), words);
        QCOMPARE(tables(), before);
        if (change == u"rebook")
            QCOMPARE(counter.act(deed + u" 18:00 8 Jones"_s), u"done"_s);
    }

    // Marker rows may stand beside a booker, before him or after.
    void bookerBesideMarkers()
    {
        const QString marker =
            u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_field=8, b_bookername='Shared Booking'"_s;
        m_server.exec(marker);
        m_server.exec(QString(marker).replace(u"Shared Booking"_s, u"Smith"_s));
        m_server.exec(marker);
        DeedCounter counter(m_server.connectionString());
        for (const QString &deed : {u"extra"_s, u"noextra"_s, u"rate"_s, u"clear"_s})
            QCOMPARE(counter.act(deed + u" 18:00 8 Smith"_s), u"done"_s);
    }

    void locksStandRoundTheTransaction()
    {
        DeedCounter counter(m_server.connectionString());
        m_server.startLog();
        QCOMPARE(counter.act(u"book 18:00 8 Plain"_s), u"done"_s);
        QCOMPARE(counter.act(u"extra 18:00 8 Plain"_s), u"done"_s);
        QCOMPARE(counter.act(u"clear 18:00 8 Plain"_s), u"done"_s);
        QCOMPARE(frame(), u"START TRANSACTION; COMMIT; START TRANSACTION; COMMIT; START TRANSACTION; COMMIT"_s);
        m_server.startLog();
        QCOMPARE(counter.act(u"book 18:00 4 Half"_s), u"done"_s);
        QCOMPARE(frame(), u"GET_LOCK 18:00; START TRANSACTION; COMMIT; RELEASE_LOCK 18:00"_s);
        m_server.startLog();
        QCOMPARE(counter.act(u"extra 18:00 4 Half"_s), u"done"_s);
        QCOMPARE(frame(), u"GET_LOCK 18:00; GET_LOCK 19:00; START TRANSACTION; COMMIT; "
                          "RELEASE_LOCK 19:00; RELEASE_LOCK 18:00"_s);
        prepare(u"book 24:00 4 Late"_s);
        m_server.startLog(); // in the order of their names, whatever the hours
        QCOMPARE(counter.act(u"extra 24:00 4 Late"_s), u"done"_s);
        QCOMPARE(frame(), u"GET_LOCK 01:00; GET_LOCK 24:00; START TRANSACTION; COMMIT; "
                          "RELEASE_LOCK 24:00; RELEASE_LOCK 01:00"_s);
        m_server.startLog();
        QCOMPARE(counter.act(u"book 18:00 3 Whole"_s), taken);
        QCOMPARE(frame(), u"GET_LOCK 18:00; START TRANSACTION; ROLLBACK; RELEASE_LOCK 18:00"_s);
    }

    void waitingEndsAfterFiveSeconds()
    {
        Database other(m_server.connectionString());
        DbConnection holder(other);
        static_cast<void>(holder.query(u"SELECT GET_LOCK('posdb ground 3 2026-11-14 19:00', 0)"_s));
        DeedCounter counter(m_server.connectionString());
        QElapsedTimer time;
        time.start();
        const QString words = counter.act(u"book 19:00 5 Half"_s);
        QVERIFY2(words.contains(u"Another counter"_s) && words.contains(u"Nothing was written"_s), qPrintable(words));
        QVERIFY2(time.elapsed() >= 4000 && time.elapsed() < 7000, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(tables(), QStringList());
        QCOMPARE(counter.act(u"book 18:00 5 Half"_s), u"done"_s); // the hour before is another matter
    }

    void noLockIsLeft_data()
    {
        drawnRows(uR"(
            done       |                                  | done
            refused    | book 18:00 3 Whole               | taken
            an error   | RENAME TABLE tbl_remark TO away  | failed
            cut off    | cut                              | failed
        )"_s);
    }

    void noLockIsLeft()
    {
        const auto [before, wanted] = cells<2>();
        CuttingProxy proxy(m_server);
        DeedCounter counter(proxy.connectionString());
        if (before.startsWith(u"book"))
            prepare(before);
        else if (before == u"cut")
            proxy.cutAt(u"INSERT INTO tbl_remark"_s, CuttingProxy::Cut::Unsent);
        else if (!before.isEmpty())
            m_server.exec(before);
        const QString words = counter.act(u"book 18:00 4 Half"_s);
        QVERIFY2(words.startsWith(wanted == u"taken" ? taken : wanted), qPrintable(words));
        const QString lock = u"SELECT IS_USED_LOCK('posdb ground 3 2026-11-14 18:00')"_s;
        QTRY_COMPARE(m_server.rows(lock), QStringList{u"NULL"_s});
    }

private:
    struct Side
    {
        QString deeds;
        QStringList morePairs;
    };

    void prepare(const QString &standing)
    {
        m_server.exec(u"CREATE TABLE IF NOT EXISTS tbl_counter2 LIKE tbl_counter1"_s);
        DeedCounter(m_server.connectionString(), 3).actAll(standing);
    }

    /// What both counters said, one after the other.
    QStringList run(const QString &held, const Side &first, const Side &second)
    {
        CuttingProxy proxy(m_server);
        proxy.holdAt(held);
        const bool pastes = first.deeds.startsWith(u"paste");
        const QStringList before = pastes ? QStringList{u"cut"_s} : QStringList();
        CounterThread one(proxy.connectionString(), 1, sharedPairs + first.morePairs, before, listOf(first.deeds));
        if (!proxy.waitUntilHeld())
            return {u"The first counter was never held"_s};
        CounterThread other(m_server.connectionString(), 2, sharedPairs + second.morePairs, before,
                            listOf(second.deeds));
        while (!other.isFinished() && !somebodyWaits())
            QThread::msleep(5);
        proxy.letGo();
        return one.words() + other.words();
    }

    [[nodiscard]] bool somebodyWaits() const
    {
        return !m_server
                    .rows(u"SELECT 1 FROM information_schema.processlist WHERE state='User lock' UNION ALL "
                          "SELECT 1 FROM information_schema.global_status WHERE "
                          "variable_name='INNODB_ROW_LOCK_CURRENT_WAITS' AND variable_value>0"_s)
                    .isEmpty();
    }

    static void compare(const QStringList &said, const QString &wanted)
    {
        if (wanted == u"one") { // the server may send either of them back
            QVERIFY2(said.count(u"done"_s) == 1 && said.count(taken) == 1, qPrintable(said.join(u"; "_s)));
            return;
        }
        QString words = said.join(u"; "_s);
        words.replace(taken, u"taken"_s);
        static const QRegularExpression gone(u"The waiting-list entry[^;]*"_s);
        words.replace(gone, u"gone"_s);
        QCOMPARE(words, wanted);
    }

    [[nodiscard]] QStringList found(const QString &damage) const
    {
        return damage.startsWith(u"SELECT") ? m_server.rows(damage) : findings(m_server).filter(damage);
    }

    [[nodiscard]] QStringList tables() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_extratime, b_specialrate FROM tbl_booking "
                             "UNION ALL SELECT m_datetime, m_field, m_remark, m_job, m_staff FROM tbl_remark"_s);
    }

    /// The transactions and locks in the log.
    [[nodiscard]] QString frame() const
    {
        static const QRegularExpression lock(u"^SELECT ((GET|RELEASE)_LOCK)\\('[^']* (\\d\\d:\\d\\d)'.*"_s);
        static const QRegularExpression frame(u"^(START TRANSACTION|COMMIT|ROLLBACK|(GET|RELEASE)_LOCK .*)$"_s);
        QStringList log = m_server.takeWholeLog();
        log.replaceInStrings(lock, u"\\1 \\3"_s);
        return log.filter(frame).join(u"; "_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Races)
#include "tst_Races.moc"
