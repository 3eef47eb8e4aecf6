#include "booking/Cancelling.h"
#include "booking/ExtraTime.h"
#include "booking/Rates.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString saturday = u"2026-11-14"_s;
const QString reasonQuestion = u"ask: Enter reason why the entry need to be cleared"_s;

QString insertBooking(const QString &hour, int field, const QString &more)
{
    return u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 "_s + hour + u":00', b_field="_s +
           QString::number(field) + u", "_s + more + u"; "_s;
}

} // namespace

/// What changes a slot that is booked: clearing, extra time, another rate.
class tst_Slots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void isRefused_data()
    {
        drawnRows(uR"(
            paid                           | >18:00 A paid 50.00              | refuse: You cannot delete paid slot
            empty                          | >18:00                           | refuse: You cannot delete an empty slot
            extra time                     | 18:00 A; >19:00 +45              | refuse: Use previous slot to delete extra time.
            partially shared               | >18:00 Partially Shared          | refuse: Delete individual slots
            shared                         | >18:00 Shared Booking            | refuse: Please delete main slots
            partially comes before shared  | >18:00 Shared Booking Partially Shared | refuse: Delete individual slots
            first failing row              | >18:00 A; >19:00; >20:00 Shared Booking | refuse: You cannot delete an empty slot
            no reason                      | >18:00 A | verify -> anna staff; ask: Enter reason why the entry need to be cleared ->
            an hour past                   | >13:00 A | verify -> anna staff; ask: Enter reason why the entry need to be cleared -> rain; refuse: You delete previous entry
            rate, free                     | >18:00                           | refuse: You cannot set empty slot
            rate, paid                     | >18:00 A paid 1.00               | refuse: The slot already paid
            rate, nobody confirms          | >18:00 A                         | verify -> nobody
            rate, staff is not enough      | >18:00 A                         | verify -> anna staff; inform: Only an administrator can change the rate of a slot.
        )"_s);
    }

    void isRefused()
    {
        const auto [day, script] = cells<2>();
        m_server.exec(insertBooking(u"18:00"_s, 3, u"b_bookername='A'"_s) +
                      insertBooking(u"13:00"_s, 3, u"b_bookername='A'"_s));
        const QStringList before = tables();
        TestStation station(m_server, listOf(script));
        const DaySelection selection = drawnDay(saturday, 3, listOf(day));
        std::vector<SlotKey> freed;
        if (QByteArray(QTest::currentDataTag()).startsWith("rate"))
            QVERIFY(!changeRateType(station, selection, u"member"_s));
        else
            clearSelection(station, selection, freed);
        QVERIFY(freed.empty());
        QCOMPARE(tables(), before);
    }

    void clearingGoesOnAfterARefusal()
    {
        // The grid is old: meanwhile one hour was cleared elsewhere and one was paid.
        m_server.exec(insertBooking(u"14:00"_s, 8, u"b_bookername='A'"_s) +
                      insertBooking(u"17:00"_s, 8, u"b_bookername='A', b_paid=0.01"_s) +
                      insertBooking(u"24:00"_s, 8, u"b_bookername='A'"_s));
        TestStation station(m_server, {u"verify -> boss admin"_s, reasonQuestion + u" -> it's raining"_s,
                                       u"refuse: The field is empty"_s, u"inform: You cannot delete paid item"_s});
        std::vector<SlotKey> cleared;
        clearSelection(station, drawnDay(saturday, 8, {u">14:00 A"_s, u">16:00 A"_s, u">17:00 A"_s, u">24:00 A"_s}),
                       cleared);
        QCOMPARE(cleared.size(), 2U);
        QCOMPARE(cleared[1].dateTimeText(), u"2026-11-14 24:00:00"_s);
        QCOMPARE(tables(),
                 QStringList({u"2026-11-14 17:00:00|8|A|0|0|"_s, u"2026-11-14 14:00:00|8|it's raining|cancel|boss|"_s,
                              u"2026-11-14 24:00:00|8|it's raining|cancel|boss|"_s}));
    }

    void clearingFreesSharedGround()
    {
        // Extra time runs into 17:00, and the error at 18:00 keeps what was freed before it.
        m_server.exec(insertBooking(u"16:00"_s, 0, u"b_bookername='A', b_extratime=15"_s) +
                      insertBooking(u"18:00"_s, 0, u"b_bookername='A', b_specialrate='poison'"_s) +
                      u"CREATE TRIGGER poison BEFORE DELETE ON tbl_booking FOR EACH ROW BEGIN "
                      "IF OLD.b_specialrate='poison' THEN SIGNAL SQLSTATE '45000'; END IF; END"_s);
        TestStation station(m_server, {u"verify -> boss admin"_s, reasonQuestion + u" -> rain"_s});
        std::vector<SlotKey> freed;
        const QString extraTime = BookerMark::extraTime + u" + hour"_s;
        QVERIFY_EXCEPTION_THROWN(
            clearSelection(station, drawnDay(saturday, 0, {u">16:00 A"_s, u"17:00 "_s + extraTime, u">18:00 A"_s}),
                           freed),
            DbError);
        QStringList slotTexts;
        for (const SlotKey &slot : freed)
            slotTexts << slot.hourText + u' ' + QString::number(slot.field);
        QCOMPARE(slotTexts.join(u','), u"16:00 0,16:00 1,16:00 2,17:00 0,17:00 1,17:00 2"_s);
    }

    void cancelOutcomes_data()
    {
        drawnRows(uR"(
            going on                | 2026-11-14 14:59:59 | 14:00 | A                                | rain | cleared
            over                    | 2026-11-14 15:00:00 | 14:00 | A                                | rain | You delete previous entry
            midnight going on       | 2026-11-15 00:59:59 | 24:00 | A                                | rain | cleared
            midnight over           | 2026-11-15 01:00:00 | 24:00 | A                                | rain | You delete previous entry
            past before mark        | 2026-11-14 14:59:59 | 13:00 | ˆ + ½ hour                       | rain | You delete previous entry
            extra time first        | 2026-11-14 14:59:59 | 18:00 | ˆ Partially Shared               | rain | Use previous slot to delete extra time.
            partially before shared | 2026-11-14 14:59:59 | 18:00 | Shared Booking Partially Shared  | rain | Delete individual slots
            mark before reason      | 2026-11-14 14:59:59 | 18:00 | Shared Booking                   |      | Please delete main slots
            reason before empty     | 2026-11-14 14:59:59 | 18:00 | A                                |      | no reason
            empty                   | 2026-11-14 14:59:59 | 18:00 | A                                | rain | The field is empty
            paid                    | 2026-11-14 14:59:59 | 17:00 | A                                | rain | You cannot delete paid item
        )"_s);
    }

    void cancelOutcomes()
    {
        const auto [now, hour, booker, reason, wanted] = cells<5>();
        m_server.exec(insertBooking(u"14:00"_s, 3, u"b_bookername='A'"_s) +
                      insertBooking(u"24:00"_s, 3, u"b_bookername='A'"_s) +
                      insertBooking(u"17:00"_s, 3, u"b_bookername='A', b_paid=50"_s));
        TestStation station(m_server);
        station.setNow(now);
        const Cancelling result = doCancel(station, u"anna"_s, {{saturday, hour, 3}, booker, reason});
        const bool cleared = result.outcome == CancelOutcome::Cancelled;
        const QString text = result.outcome == CancelOutcome::NoReason ? u"no reason"_s : result.refusalText();
        QCOMPARE(cleared ? u"cleared"_s : text, wanted);
        // Own remark and the partners'.
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_booking UNION ALL SELECT COUNT(*) FROM tbl_remark"_s),
                 cleared ? QStringList({u"2"_s, u"3"_s}) : QStringList({u"3"_s, u"0"_s}));
    }

    void extraTimeIsRefused_data()
    {
        // What is asked when 30 minutes are added, and when the extra time is cleared.
        drawnRows(uR"(
            free               | 14 14:59:59 | >18:00             | refuse: There is no booked slot to add 30 minutes | refuse: You cannot delete empty slot
            paid               | 14 14:59:59 | >18:00 A paid 9.00 | refuse: The slot already paid                     | refuse: You cannot delete paid slot
            paid in last row   | 14 14:59:59 | >02:00 A paid 9.00 | refuse: The slot already paid                     | refuse: You cannot delete paid slot
            last row           | 14 14:59:59 | >02:00 A           | refuse: There is no more slot to add extra time!  | refuse: There is no extra time associated with the slot
            past before taken  | 14 14:59:59 | >12:00 A; 13:00 B  | refuse: You cannot book previous entry!           | refuse: You cannot delete elapsed extra time
            next one going on  | 14 14:59:59 | >13:00 A           | verify -> nobody                                  | refuse: You cannot delete elapsed extra time
            next one over      | 14 15:00:00 | >13:00 A           | refuse: You cannot book previous entry!           | refuse: You cannot delete elapsed extra time
            begun              | 14 18:00:00 | >18:00 A; 19:00 +15 | refuse: The field already being booked           | refuse: You cannot delete elapsed extra time
            begins in a second | 14 17:59:59 | >18:00 A; 19:00 +15 | refuse: The field already being booked           | verify -> nobody
            into midnight      | 14 14:59:59 | >23:00 A           | verify -> nobody                                  | refuse: There is no extra time associated with the slot
            midnight over      | 15 01:00:00 | >23:00 A           | refuse: You cannot book previous entry!           | refuse: You cannot delete elapsed extra time
            midnight begun     | 15 00:00:00 | >24:00 A; 01:00 +15 | refuse: The field already being booked           | refuse: You cannot delete elapsed extra time
            next one taken     | 14 14:59:59 | >18:00 A; 19:00 B  | refuse: The field already being booked            | refuse: There is no extra time associated with the slot
            on the extra time  | 14 14:59:59 | 18:00 A; >19:00 +15 | verify -> nobody                                 | refuse: The slot is an extra time of previous slot, use the previous slot to clear the additions
        )"_s);
    }

    void extraTimeIsRefused()
    {
        const auto [now, day, adding, clearing] = cells<4>();
        m_server.exec(insertBooking(u"18:00"_s, 3, u"b_bookername='A', b_extratime=15"_s));
        const QStringList before = tables();
        TestStation station(m_server, {adding, clearing});
        station.setNow(u"2026-11-"_s + now);
        const DaySelection selection = drawnDay(saturday, 3, listOf(day));
        QVERIFY(!AddExtraTime(station, selection, 30));
        QVERIFY(!clearExtraTime(station, selection));
        QCOMPARE(tables(), before);
    }

    void rates_data()
    {
        drawnRows(uR"(
            first hour     | 2026-11-14 | 3 | 8  |               | 60.5
            last hour      | 2026-11-14 | 3 | 17 |               | 60.5
            next band      | 2026-11-14 | 3 | 18 |               | 80
            midnight is 0  | 2026-11-14 | 3 | 24 |               | 90
            member         | 2026-11-14 | 3 | 18 | member        | 40
            no such rate   | 2026-11-14 | 3 | 18 | specialgroup4 | 0
            other field    | 2026-11-14 | 4 | 18 |               | 0
            Sunday         | 2026-11-15 | 3 | 18 |               | 0
        )"_s);
    }

    void rates()
    {
        const auto [day, field, hour, rateType, wanted] = cells<5>();
        const QString row =
            u"INSERT INTO tbl_rate SET r_day='Saturday', r_field=3, r_special='%1', r_timestart=%2, r_timestop=%3, "
            "r_rate=%4; "_s;
        m_server.exec(row.arg(u""_s, u"8"_s, u"17"_s, u"60.5"_s) + row.arg(u""_s, u"18"_s, u"23"_s, u"80"_s) +
                      row.arg(u""_s, u"0"_s, u"2"_s, u"90"_s) + row.arg(u"member"_s, u"8"_s, u"23"_s, u"40"_s));
        Database database(m_server.connectionString());
        m_server.startLog();
        const double rate = CalcFieldRate(database, field.toShort(), hour.toShort(), rateDayName(day), rateType);
        QCOMPARE(QString::number(rate), wanted);
        const QString hourText = hour == u"24" ? u"0"_s : hour;
        QCOMPARE(m_server.takeLog(),
                 QStringList{u"SELECT * from tbl_rate where r_day LIKE \""_s +
                             (day == saturday ? u"Saturday"_s : u"Sunday"_s) + u"\" AND r_field="_s + field +
                             u" AND r_special = \""_s + rateType + u"\" AND r_timestart<="_s + hourText +
                             u" and r_timestop>="_s + hourText});
    }

private:
    /// Everything that a refusal must leave alone.
    [[nodiscard]] QStringList tables() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_shared, b_extratime, b_specialrate "
                             "FROM tbl_booking UNION ALL SELECT m_datetime, m_field, m_remark, m_job, m_staff, '' "
                             "FROM tbl_remark"_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Slots)
#include "tst_Slots.moc"
