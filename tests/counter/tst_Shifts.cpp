#include "app/Errors.h"
#include "app/SqlText.h"
#include "counter/HandOver.h"
#include "counter/ShiftEnd.h"
#include "counter/ShiftSlip.h"
#include "support/CuttingProxy.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"
#include "support/MessageOf.h"
#include "support/TestStation.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const CountedMoney counted{u"245.5"_s, u"345.50"_s, u"100"_s};

struct ShiftStation : ScriptedPerson, Station
{
    ShiftStation(const QString &connectionString, const QString &shift)
        : Station(testSettings(connectionString), person, [this] { return moment; })
    {
        CurrentStaff = u"anna"_s;
        shiftName = shift;
    }

    QDateTime moment{QDate(2026, 11, 14), QTime(14, 59, 59)};
};

} // namespace

/// The end of a shift, what is shown beside it, the hand-over and the collection of cash.
class tst_Shifts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8()); }
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_system SET sys_counter=1, sys_counterstaff='anna'; INSERT INTO tbl_staff "
                      "(st_login) VALUES ('anna'), ('ben'); INSERT INTO tbl_item (i_id, i_name, i_currentstock) VALUES "
                      "(1, 'Cola', 4), (2, 'O''Brien\\'s', 20), (3, 'a=b|c', 7)"_s);
    }

    void recording_data()
    {
        // Sales and the end of the last shift, of this day; the row's first transaction and previous end.
        drawnRows(uR"(
            first ever         | 09:00; 11:00 |          | 09:00:00 |
            never sold         |              |          | 14:59:59 |
            nothing this shift | 07:00        | 08:00:00 | 14:59:59 | 08:00:00
            second shift       | 07:00; 08:30; 09:00 | 08:00:00 | 08:30:00 | 08:00:00
            at the very moment | 08:00        | 08:00:00 | 08:00:00 | 08:00:00
            clock was ahead    | 16:00        |          | 14:59:59 |
        )"_s);
    }

    void recording()
    {
        const auto row = cells<4>();
        const QString day = u"2026-11-14 "_s;
        for (const QString &time : listOf(row[0]))
            m_server.exec(u"INSERT INTO tbl_counter1 SET c_transaction=1, c_item='Cola', c_datetime='"_s + day + time +
                          u"'"_s);
        if (!row[1].isEmpty())
            m_server.exec(u"INSERT INTO tbl_shift1 SET sh_shift='morning', sh_datetime='"_s + day + row[1] + u"'"_s);
        ShiftStation station(m_server.connectionString(), u"evening"_s);
        ShiftEnd end(station);
        end.open();
        end.record(counted);
        end.record(counted); // a second OK
        QCOMPARE(m_server
                     .rows(u"SELECT sh_sales, sh_totalmoney, sh_datetime, sh_float, sh_first_transaction, "
                           "sh_lastdatetime, sh_shift, sh_stocklog, sh_staff FROM tbl_shift1 ORDER BY sh_id DESC"_s)
                     .first(),
                 sql(u"245.50|345.50|2026-11-14 14:59:59|100.00|%1|%2|evening|Cola=4|O'Brien's=20|a=b|c=7||anna"_s,
                     day + row[2], row[3].isEmpty() ? QString() : day + row[3]));
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_shift1"_s).first().toInt(), row[1].isEmpty() ? 1 : 2);
        QCOMPARE(m_server.rows(u"SELECT sys_doclose FROM tbl_system"_s), QStringList{u"1"_s});
    }

    void statements()
    {
        ShiftStation station(m_server.connectionString(), u"morning"_s);
        ShiftEnd end(station);
        end.open();
        m_server.startLog();
        end.record({u"5"_s, u"12 a"_s, u"zero"_s});
        const QString logRow = u"INSERT INTO tbl_log SET log_counter= 1, log_staffname='%1', "
                               "log_datetime='2026-11-14 14:59:59', log_do='%2'"_s;
        const QString latest = u"SELECT * FROM tbl_shift1 ORDER BY sh_datetime DESC LIMIT 1"_s;
        QCOMPARE(m_server.takeLog(),
                 (QStringList{logRow.arg(u"anna"_s, u"anna morning Shift Ended "_s),
                              u"UPDATE tbl_system SET sys_doclose=1 where sys_counter =1"_s, latest,
                              u"SELECT c_datetime FROM tbl_counter1 ORDER BY c_datetime ASC LIMIT 1"_s,
                              u"SELECT c_datetime FROM tbl_counter1 WHERE c_datetime >= '2026-11-14 14:59:59' AND "
                              "c_datetime <= '2026-11-14 14:59:59' ORDER BY c_datetime ASC LIMIT 1"_s,
                              latest, u"SELECT * FROM tbl_item"_s,
                              u"INSERT INTO tbl_shift1 SET sh_sales=5, sh_totalmoney=12, "
                              "sh_datetime='2026-11-14 14:59:59', sh_float=0, "
                              "sh_first_transaction='2026-11-14 14:59:59', sh_lastdatetime='', sh_shift='morning', "
                              "sh_stocklog='Cola=4|O\\'Brien\\'s=20|a=b|c=7|', sh_staff='anna'"_s}));

        m_server.startLog();
        requestHandOver(station, u"ben"_s);
        CashRecord(station).handOver(u"ben"_s, u"12.50 or so"_s);
        CashRecord(station).collect(u"lots"_s);
        QCOMPARE(station.CurrentStaff, u"ben"_s);
        QCOMPARE(m_server.takeLog(),
                 (QStringList{logRow.arg(u"anna"_s, u"HandOver requested by ben, drawer open"_s),
                              logRow.arg(u"anna"_s, u"Handover at 12.5, will change user now"_s),
                              u"UPDATE tbl_system SET sys_counterstaff='ben' where sys_counter =1"_s,
                              logRow.arg(u"ben"_s, u"logging in"_s),
                              u"UPDATE tbl_staff SET st_lastlogin='2026-11-14 14:59:59' WHERE st_login='ben'"_s,
                              logRow.arg(u"ben"_s, u"Cash Collected 0"_s)}));
    }

    // Cut at every statement, before and after the server heard it: nothing or everything, and the next OK once only.
    void breaks_data()
    {
        QTest::addColumn<bool>("isAnswered");
        QTest::newRow("before the server hears") << false;
        QTest::newRow("before the answer comes") << true;
    }

    void breaks()
    {
        QFETCH(const bool, isAnswered);
        CuttingProxy proxy(m_server);
        bool wasCut = true;
        for (int statement = 1; wasCut; ++statement) {
            init();
            DeedCounter copy(proxy.connectionString());
            copy.station.CurrentStaff = u"anna"_s;
            copy.station.shiftName = u"morning"_s;
            ShiftEnd end(copy.station);
            end.open();
            proxy.cutAt(statement, isAnswered ? CuttingProxy::Cut::Unanswered : CuttingProxy::Cut::Unsent);
            wasCut = !messageOf([&] { end.record(counted); }).isEmpty();
            const int stands = shiftRows();
            QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s).first().toInt(), stands);
            QCOMPARE(m_server.rows(u"SELECT sys_doclose FROM tbl_system"_s).first().toInt(), stands);
            proxy.pass();
            end.record(counted);
            QCOMPARE(shiftRows(), 1);
        }
    }

    void answerLostForGood()
    {
        CuttingProxy proxy(m_server);
        ShiftStation station(proxy.connectionString(), u"morning"_s);
        ShiftEnd end(station);
        end.open();
        proxy.cutAt(u"COMMIT"_s, CuttingProxy::Cut::Unanswered, true);
        QVERIFY_THROWS_EXCEPTION(NotDone, end.record(counted));
        proxy.pass();
        station.moment = station.moment.addSecs(240);
        QCOMPARE(end.record(counted).ended, u"2026-11-14 14:59:59"_s);
        QCOMPARE(shiftRows(), 1);
    }

    void cashOnce()
    {
        CuttingProxy proxy(m_server);
        ShiftStation station(proxy.connectionString(), u"morning"_s);
        CashRecord collection(station);
        CashRecord change(station);
        const auto once = [&](const std::function<void()> &act) {
            proxy.cutAt(u"COMMIT"_s, CuttingProxy::Cut::Unanswered, true);
            QVERIFY_THROWS_EXCEPTION(NotDone, act());
            proxy.pass();
            station.moment = station.moment.addSecs(60);
            act();
        };
        once([&] { collection.collect(u"5"_s); });
        once([&] { change.handOver(u"ben"_s, u"5"_s); });
        QCOMPARE(m_server.rows(u"SELECT log_do FROM tbl_log ORDER BY log_id"_s),
                 (QStringList{u"Cash Collected 5"_s, u"Handover at 5, will change user now"_s, u"logging in"_s}));
        QCOMPARE(station.CurrentStaff, u"ben"_s);
    }

    void endedByAnotherCopy()
    {
        ShiftStation one(m_server.connectionString(), u"morning"_s);
        ShiftStation two(m_server.connectionString(), u"morning"_s);
        ShiftEnd first(one);
        ShiftEnd second(two);
        first.open();
        second.open();
        second.record(counted);
        QCOMPARE(messageOf([&] { first.record(counted); }),
                 u"This shift was ended already: morning shift, by anna at 2026-11-14 14:59:59. Nothing was recorded "
                 "now."_s);
        QCOMPARE(shiftRows(), 1);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_log"_s), QStringList{u"1"_s});
    }

    void figures()
    {
        m_server.exec(uR"(
            INSERT INTO tbl_shift1 SET sh_datetime='2026-11-14 08:00:00', sh_float=100, sh_stocklog='Cola=10|Old=2|';
            INSERT INTO tbl_counter1 (c_transaction, c_datetime, c_item, c_itemquantity, c_itemtotal, c_special) VALUES
                (1, '2026-11-14 08:00:00', 'Cola', 9, 90, ''),
                (2, '2026-11-14 08:00:01', 'Field Number 7 14/11/2026 20:00', 1.5, 59.93, 'member'),
                (2, '2026-11-14 08:00:01', 'Field Number plate', 2, 5.1, ''),
                (3, '2026-11-14 14:59:59', 'cola', 3, 0.2, ''), (4, '2026-11-14 15:00:00', 'Cola', 1, 1, '');
            INSERT INTO tbl_log (log_counter, log_datetime, log_staffname, log_do) VALUES
                (1, '2026-11-14 07:00:00', 'anna', 'Cash Collected 7'), (1, '2026-11-14 09:00:00', 'anna',
                'Cash Collected 20.5'), (2, '2026-11-14 09:00:00', 'anna', 'Cash Collected 9'),
                (1, '2026-11-14 10:00:00', 'anna', 'No Sale button pressed, drawer open'),
                (1, '2026-11-14 10:30:00', 'anna', 'Handover at 250, will change user now'),
                (1, '2026-11-14 11:00:00', 'anna', 'Sales made, drawer open'))"_s);
        m_server.exec(u"CREATE TABLE tbl_counter2 LIKE tbl_counter1; INSERT INTO tbl_counter2 SET c_item='Cola', "
                      "c_itemquantity=2, c_datetime='2026-11-14 12:00:00'"_s);
        ShiftStation station(m_server.connectionString(), u"evening"_s);
        station.settings.CounterCount = 2;
        const ShiftFigures found = shiftFigures(station, lastShift(station)->ended, u"2026-11-14 14:59:59"_s);
        QCOMPARE(found.transactions, 2);
        QCOMPARE((QList<double>{found.hours, found.hoursTotal, found.pieces, found.goodsTotal, found.collected()}),
                 (QList<double>{1.5, 59.93, 5, 5.3, 20.5}));
        QCOMPARE(found.noSales, 1);
        QCOMPARE(found.handOvers, std::vector<QString>{u"10:30  Handover at 250"_s});
        QCOMPARE(moneyExpected(100, found), 144.73);

        ShiftEnd end(station);
        end.open();
        const EndedShift shift = end.record({u"40"_s, u"140"_s, u"100"_s});
        QStringList moves;
        for (const StockMove &move : stockMoves(station, *end.before(), shift))
            moves << sql(u"%1: %2 gone, %3 sold"_s, move.item, plainNumber(move.gone()), plainNumber(move.sold));
        QCOMPARE(moves, (QStringList{u"Cola: 6 gone, 5 sold"_s, u"O'Brien's: -20 gone, 0 sold"_s,
                                     u"a=b|c: -7 gone, 0 sold"_s, u"Old: 2 gone, 0 sold"_s}));
        const QString slip = slipText(closingSlip(station, endedShifts(station, 30).front()));
        for (const QString &line :
             {u"Hours  1.5  59.93"_s, u"Float at the beginning    100.00"_s, u"Should be in the drawer    144.73"_s,
              u"Difference    -4.73"_s, u"TOTAL AMOUNT  $ 40.00"_s})
            QVERIFY2(slip.contains(line + u'\n'), qPrintable(slip));
    }

private:
    [[nodiscard]] int shiftRows() const { return m_server.rows(u"SELECT COUNT(*) FROM tbl_shift1"_s).first().toInt(); }

    QTemporaryDir m_folder;
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Shifts)
#include "tst_Shifts.moc"
