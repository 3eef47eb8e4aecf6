#include "booking/Cancelling.h"
#include "booking/ExtraTime.h"
#include "booking/Rates.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString saturday = u"2026-11-14"_s;
const QString confirmed = u"verify -> anna staff"_s;
const QString reasonQuestion = u"ask: Enter reason why the entry need to be cleared"_s;

QString insertBooking(const QString &hour, int field, const QString &more)
{
    return u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 "_s + hour + u":00', b_field="_s +
           QString::number(field) + u", "_s + more + u"; "_s;
}

QString remarkSql(const QString &text, const QString &job, const QString &slotHour, int field)
{
    return u"INSERT INTO tbl_remark SET m_dotime='2026-11-14 14:59:59', m_datetime='2026-11-14 "_s + slotHour +
           u":00', m_remark='"_s + text + u"', m_job='"_s + job + u"' ,m_field="_s + QString::number(field) +
           u", m_staff='anna', m_actiontime='14 Nov 02:59:59 PM'"_s;
}

} // namespace

/// What changes a slot that is booked: clearing, extra time, another rate.
class tst_Slots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_server = std::make_unique<PrivateServer>(); }
    void init() { m_server->freshDatabase(); }

    void clearingIsRefused_data();
    void clearingIsRefused();
    void clearingGoesOnAfterARefusal();
    void cancelOutcomes_data();
    void cancelOutcomes();
    void cancelStatements_data();
    void cancelStatements();
    void extraTimeIsRefused_data();
    void extraTimeIsRefused();
    void extraTimeStatements();
    void rateChangeIsRefused_data();
    void rateChangeIsRefused();
    void rateChangeStatements();
    void rates_data();
    void rates();

private:
    /// Everything that a refusal must leave alone.
    [[nodiscard]] QStringList tables() const
    {
        return m_server->rows(u"SELECT b_datetime, b_field, b_bookername, b_shared, b_extratime, b_specialrate "
                              "FROM tbl_booking UNION ALL SELECT m_datetime, m_field, m_remark, m_job, m_staff, '' "
                              "FROM tbl_remark"_s);
    }

    std::unique_ptr<PrivateServer> m_server;
};

void tst_Slots::clearingIsRefused_data()
{
    QTest::addColumn<QStringList>("day");
    QTest::addColumn<QStringList>("script");
    const auto refusal = [](const char *name, const QStringList &day, const QString &text) {
        QTest::newRow(name) << day << QStringList{u"refuse: "_s + text};
    };
    refusal("paid", {u">18:00 Team A paid 50.00"_s}, u"You cannot delete paid slot"_s);
    refusal("paid comes before empty", {u">18:00  paid 50.00"_s}, u"You cannot delete paid slot"_s);
    refusal("empty", {u">18:00"_s}, u"You cannot delete an empty slot"_s);
    refusal("extra time", {u"18:00 Team A"_s, u">19:00 +45"_s}, u"Use previous slot to delete extra time."_s);
    refusal("partially shared", {u">18:00 Partially Shared"_s}, u"Delete individual slots"_s);
    refusal("shared", {u">18:00 Shared Booking"_s}, u"Please delete main slots"_s);
    refusal("partially comes before shared", {u">18:00 Shared Booking Partially Shared"_s},
            u"Delete individual slots"_s);
    refusal("past is no matter here", {u">09:00"_s}, u"You cannot delete an empty slot"_s);
    refusal("first failing row", {u">18:00 Team A"_s, u">19:00"_s, u">20:00 Shared Booking"_s},
            u"You cannot delete an empty slot"_s);
    const QStringList booked{u">18:00 Team A"_s};
    QTest::newRow("nobody confirms") << booked << QStringList{u"verify -> nobody"_s};
    QTest::newRow("no reason") << booked << QStringList{confirmed, reasonQuestion + u" ->"_s};
    QTest::newRow("an hour past") << QStringList{u">13:00 Team A"_s}
                                  << QStringList{confirmed, reasonQuestion + u" -> rain"_s,
                                                 u"refuse: You delete previous entry"_s};
}

void tst_Slots::clearingIsRefused()
{
    QFETCH(QStringList, day);
    QFETCH(QStringList, script);
    m_server->exec(insertBooking(u"18:00"_s, 3, u"b_bookername='Team A'"_s) +
                   insertBooking(u"13:00"_s, 3, u"b_bookername='Team A'"_s));
    const QStringList before = tables();
    ScriptedPrompts prompts(script);
    TestStation station(*m_server, prompts);
    QVERIFY(clearSelection(station, drawnDay(saturday, 3, day)).empty());
    QCOMPARE(tables(), before);
}

void tst_Slots::clearingGoesOnAfterARefusal()
{
    // The grid is old: meanwhile one hour was cleared elsewhere and one was paid.
    m_server->exec(insertBooking(u"14:00"_s, 8, u"b_bookername='A'"_s) +
                   insertBooking(u"17:00"_s, 8, u"b_bookername='A', b_paid=0.01"_s) +
                   insertBooking(u"24:00"_s, 8, u"b_bookername='A'"_s));
    ScriptedPrompts prompts({u"verify -> boss admin"_s, reasonQuestion + u" -> it's raining"_s,
                             u"refuse: The field is empty"_s, u"inform: You cannot delete paid item"_s});
    TestStation station(*m_server, prompts);
    const auto cleared =
        clearSelection(station, drawnDay(saturday, 8, {u">14:00 A"_s, u">16:00 A"_s, u">17:00 A"_s, u">24:00 A"_s}));
    QCOMPARE(cleared.size(), 2U);
    QCOMPARE(cleared[1].dateTimeText(), u"2026-11-14 24:00:00"_s);
    QCOMPARE(tables(),
             QStringList({u"2026-11-14 17:00:00|8|A|0|0|"_s, u"2026-11-14 14:00:00|8|it's raining|cancel|boss|"_s,
                          u"2026-11-14 24:00:00|8|it's raining|cancel|boss|"_s}));
}

void tst_Slots::cancelOutcomes_data()
{
    QTest::addColumn<QString>("now");
    QTest::addColumn<QString>("hour");
    QTest::addColumn<QString>("booker");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<CancelOutcome>("outcome");
    const QString early = u"2026-11-14 14:59:59"_s;
    const QString extra = u"\u02C6 + ½ hour "_s;
    const QString rain = u"rain"_s;
    const QString teamA = u"A"_s;
    using enum CancelOutcome;
    QTest::newRow("going on") << early << u"14:00"_s << teamA << rain << Cancelled;
    QTest::newRow("over") << u"2026-11-14 15:00:00"_s << u"14:00"_s << teamA << rain << PreviousEntry;
    QTest::newRow("midnight going on") << u"2026-11-15 00:59:59"_s << u"24:00"_s << teamA << rain << Cancelled;
    QTest::newRow("midnight over") << u"2026-11-15 01:00:00"_s << u"24:00"_s << teamA << rain << PreviousEntry;
    QTest::newRow("past before mark") << early << u"13:00"_s << extra << rain << PreviousEntry;
    QTest::newRow("extra time before shared")
        << early << u"18:00"_s << extra + u"Shared Booking"_s << rain << ExtraTime;
    QTest::newRow("partially before shared")
        << early << u"18:00"_s << u"Shared Booking Partially Shared"_s << rain << PartiallyShared;
    QTest::newRow("mark before reason") << early << u"18:00"_s << u"Shared Booking"_s << u""_s << SharedBooking;
    QTest::newRow("reason before empty") << early << u"18:00"_s << teamA << u""_s << NoReason;
    QTest::newRow("empty") << early << u"18:00"_s << teamA << rain << FieldEmpty;
    QTest::newRow("paid") << early << u"17:00"_s << teamA << rain << PaidItem;
}

void tst_Slots::cancelOutcomes()
{
    QFETCH(QString, now);
    QFETCH(QString, hour);
    QFETCH(QString, booker);
    QFETCH(QString, reason);
    QFETCH(CancelOutcome, outcome);
    m_server->exec(insertBooking(u"14:00"_s, 3, u"b_bookername='A'"_s) +
                   insertBooking(u"24:00"_s, 3, u"b_bookername='A'"_s) +
                   insertBooking(u"17:00"_s, 3, u"b_bookername='A', b_paid=50"_s));
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    station.setNow(now);
    QCOMPARE(doCancel(station, u"anna"_s, {saturday, hour, booker, 3, reason}), outcome);
    // Own remark and the partners'.
    QCOMPARE(m_server->rows(u"SELECT COUNT(*) FROM tbl_booking UNION ALL SELECT COUNT(*) FROM tbl_remark"_s),
             outcome == CancelOutcome::Cancelled ? QStringList({u"2"_s, u"3"_s}) : QStringList({u"3"_s, u"0"_s}));
}

void tst_Slots::cancelStatements_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("standing");
    QTest::addColumn<QStringList>("sent");
    const auto own = [](int field) {
        const QString number = QString::number(field);
        return QStringList{u"SELECT * FROM tbl_booking WHERE b_datetime='2026-11-14 24:00:00' AND b_field="_s + number,
                           u"DELETE FROM tbl_booking where b_datetime='2026-11-14 24:00:00' AND  b_field="_s + number,
                           remarkSql(u"it\\'s raining"_s, u"cancel"_s, u"24:00"_s, field)};
    };
    const auto removal = [](int field) {
        return u"DELETE FROM tbl_booking WHERE b_datetime='2026-11-14 24:00:00' AND b_field="_s +
               QString::number(field);
    };
    const QString look = u"SELECT * FROM tbl_booking where b_datetime='2026-11-14 24:00:00' AND b_field=0"_s;
    const QString lower =
        u"UPDATE tbl_booking SET b_shared=b_shared - 1 where b_datetime='2026-11-14 24:00:00' AND b_field=0"_s;
    const QString parentRemark = remarkSql(u" partially booked field 0"_s, u"cancel"_s, u"24:00"_s, 0);
    const auto parent = [](int shared) {
        return insertBooking(u"24:00"_s, 0, u"b_bookername='Partially Shared', b_shared="_s + QString::number(shared));
    };
    QTest::newRow("alone") << 8 << u""_s << own(8);
    QTest::newRow("partners") << 0
                              << insertBooking(u"24:00"_s, 1, u"b_bookername='Shared Booking'"_s) +
                                     insertBooking(u"24:00"_s, 2, u"b_bookername='Shared Booking'"_s)
                              << own(0) + QStringList{
                                              removal(1), remarkSql(u" shared booking"_s, u"cancel"_s, u"24:00"_s, 1),
                                              removal(2), remarkSql(u" shared booking"_s, u"cancel"_s, u"24:00"_s, 2)};
    QTest::newRow("parent, last") << 2 << parent(1) << own(2) + QStringList{look, removal(0), parentRemark};
    QTest::newRow("parent, one of two") << 2 << parent(2) << own(2) + QStringList{look, lower, parentRemark};
    QTest::newRow("parent without a row") << 2 << u""_s << own(2) + QStringList{look, lower, parentRemark};
}

void tst_Slots::cancelStatements()
{
    QFETCH(int, field);
    QFETCH(QString, standing);
    m_server->exec(standing + insertBooking(u"24:00"_s, field, u"b_bookername='A'"_s) +
                   insertBooking(u"23:00"_s, field, u"b_bookername='A'"_s));
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    DbConnection{station.database};
    m_server->startLog();
    QCOMPARE(doCancel(station, u"anna"_s, {saturday, u"24:00"_s, u"A"_s, field, u"it's raining"_s}),
             CancelOutcome::Cancelled);
    QTEST(m_server->takeLog(), "sent");
    QCOMPARE(m_server->rows(u"SELECT b_bookername FROM tbl_booking WHERE b_datetime LIKE '%23:00:00'"_s),
             QStringList{u"A"_s});
}

void tst_Slots::extraTimeIsRefused_data()
{
    QTest::addColumn<QString>("now");
    QTest::addColumn<QStringList>("day");
    QTest::addColumn<QString>("adding");   // what is asked when 30 minutes are added
    QTest::addColumn<QString>("clearing"); // and when the extra time is cleared
    const QString early = u"2026-11-14 14:59:59"_s;
    const QString nobody = u"verify -> nobody"_s;
    const auto refusal = [](const char *text) { return u"refuse: "_s + QString::fromLatin1(text); };
    const QString elapsed = refusal("You cannot delete elapsed extra time");
    const QString none = refusal("There is no extra time associated with the slot");
    const QString taken = refusal("The field already being booked");
    const QString paid = refusal("The slot already paid");
    QTest::newRow("free") << early << QStringList{u">18:00"_s} << refusal("There is no booked slot to add 30 minutes")
                          << refusal("You cannot delete empty slot");
    QTest::newRow("paid") << early << QStringList{u">18:00 A paid 9.00"_s} << paid
                          << refusal("You cannot delete paid slot");
    QTest::newRow("paid comes before the last row")
        << early << QStringList{u">02:00 A paid 9.00"_s} << paid << refusal("You cannot delete paid slot");
    QTest::newRow("last row") << early << QStringList{u">02:00 A"_s}
                              << refusal("There is no more slot to add extra time!") << none;
    QTest::newRow("past comes before taken")
        << early << QStringList{u">12:00 A"_s, u"13:00 B"_s} << refusal("You cannot book previous entry!") << elapsed;
    QTest::newRow("next one is going on") << early << QStringList{u">13:00 A"_s} << nobody << elapsed;
    QTest::newRow("next one is over") << u"2026-11-14 15:00:00"_s << QStringList{u">13:00 A"_s}
                                      << refusal("You cannot book previous entry!") << elapsed;
    QTest::newRow("has begun") << u"2026-11-14 18:00:00"_s << QStringList{u">18:00 A"_s, u"19:00 +15"_s} << taken
                               << elapsed;
    QTest::newRow("begins in a second") << u"2026-11-14 17:59:59"_s << QStringList{u">18:00 A"_s, u"19:00 +15"_s}
                                        << taken << nobody;
    QTest::newRow("into midnight") << early << QStringList{u">23:00 A"_s} << nobody << none;
    QTest::newRow("midnight over") << u"2026-11-15 01:00:00"_s << QStringList{u">23:00 A"_s}
                                   << refusal("You cannot book previous entry!") << elapsed;
    QTest::newRow("midnight has begun") << u"2026-11-15 00:00:00"_s << QStringList{u">24:00 A"_s, u"01:00 +15"_s}
                                        << taken << elapsed;
    QTest::newRow("next one taken") << early << QStringList{u">18:00 A"_s, u"19:00 B"_s} << taken << none;
    QTest::newRow("on the extra time") << early << QStringList{u"18:00 A"_s, u">19:00 +15"_s} << nobody
                                       << refusal("The slot is an extra time of previous slot, use the previous slot "
                                                  "to clear the additions");
}

void tst_Slots::extraTimeIsRefused()
{
    QFETCH(QString, now);
    QFETCH(QStringList, day);
    QFETCH(QString, adding);
    QFETCH(QString, clearing);
    m_server->exec(insertBooking(u"18:00"_s, 3, u"b_bookername='A', b_extratime=15"_s));
    const QStringList before = tables();
    ScriptedPrompts prompts({adding, clearing});
    TestStation station(*m_server, prompts);
    station.setNow(now);
    QVERIFY(!AddExtraTime(station, drawnDay(saturday, 3, day), 30));
    QVERIFY(!clearExtraTime(station, drawnDay(saturday, 3, day)));
    QCOMPARE(tables(), before);
}

void tst_Slots::extraTimeStatements()
{
    m_server->exec(insertBooking(u"23:00"_s, 3, u"b_bookername='A', b_extratime=15"_s) +
                   insertBooking(u"23:00"_s, 4, u"b_bookername='B', b_extratime=15"_s));
    ScriptedPrompts prompts({confirmed, confirmed, confirmed});
    TestStation station(*m_server, prompts);
    DbConnection{station.database};
    const QString slot = u" WHERE b_datetime='2026-11-14 23:00:00'AND b_field=3"_s;
    m_server->startLog();
    QVERIFY(AddExtraTime(station, drawnDay(saturday, 3, {u">23:00 A"_s}), 45));
    QCOMPARE(m_server->takeLog(),
             QStringList({u"SELECT * FROM tbl_booking"_s + slot, u"UPDATE tbl_booking SET b_extratime=45"_s + slot,
                          remarkSql(u" for player adding 45 minutes more "_s, u"extra time"_s, u"23:00"_s, 3)}));
    const QString extraTimes = u"SELECT b_field, b_extratime FROM tbl_booking ORDER BY b_field"_s;
    QCOMPARE(m_server->rows(extraTimes), QStringList({u"3|45"_s, u"4|15"_s}));
    m_server->startLog();
    QVERIFY(clearExtraTime(station, drawnDay(saturday, 3, {u">23:00 A"_s, u"24:00 +45"_s})));
    QCOMPARE(m_server->takeLog(),
             QStringList({u"UPDATE tbl_booking SET b_extratime=0"_s + slot,
                          remarkSql(u" do not want extratime."_s, u"delete extra time"_s, u"23:00"_s, 3)}));
    QCOMPARE(m_server->rows(extraTimes), QStringList({u"3|0"_s, u"4|15"_s}));

    // The booking has vanished since the grid was drawn: nothing is said and nothing written.
    m_server->exec(u"DELETE FROM tbl_booking WHERE b_field=3"_s);
    const QStringList before = tables();
    AddExtraTime(station, drawnDay(saturday, 3, {u">23:00 A"_s}), 15);
    QCOMPARE(tables(), before);
}

void tst_Slots::rateChangeIsRefused_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QStringList>("script");
    QTest::newRow("free") << u">18:00"_s << QStringList{u"refuse: You cannot set empty slot"_s};
    QTest::newRow("paid") << u">18:00 A paid 1.00"_s << QStringList{u"refuse: The slot already paid"_s};
    QTest::newRow("nobody confirms") << u">18:00 A"_s << QStringList{u"verify -> nobody"_s};
    QTest::newRow("staff is not enough") << u">18:00 A"_s
                                         << QStringList{confirmed, u"inform: Only an administrator can change the rate "
                                                                   "of a slot."_s};
}

void tst_Slots::rateChangeIsRefused()
{
    QFETCH(QString, row);
    QFETCH(QStringList, script);
    m_server->exec(insertBooking(u"18:00"_s, 3, u"b_bookername='A'"_s));
    const QStringList before = tables();
    ScriptedPrompts prompts(script);
    TestStation station(*m_server, prompts);
    QVERIFY(!changeRateType(station, drawnDay(saturday, 3, {row}), u"member"_s));
    QCOMPARE(tables(), before);
}

void tst_Slots::rateChangeStatements()
{
    m_server->exec(insertBooking(u"24:00"_s, 3, u"b_bookername='O\\'Neil', b_specialrate='student'"_s));
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    DbConnection{station.database};
    for (const QString &rate : {u"specialgroup2"_s, u""_s}) {
        prompts.expect({u"verify -> anna admin"_s});
        m_server->startLog();
        QVERIFY(changeRateType(station, drawnDay(saturday, 3, {u">24:00 O'Neil"_s}), rate));
        QCOMPARE(m_server->takeLog(), QStringList({u"UPDATE tbl_booking SET b_specialrate='"_s + rate +
                                                       u"' where b_datetime='2026-11-14 24:00:00' AND b_field=3"_s,
                                                   remarkSql(u" set "_s + rate + u" rate for O\\'Neil 24:00"_s,
                                                             u"change rate"_s, u"24:00"_s, 3)}));
        QCOMPARE(m_server->rows(u"SELECT b_specialrate FROM tbl_booking"_s), QStringList{rate});
    }
}

void tst_Slots::rates_data()
{
    QTest::addColumn<QString>("day");
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("hour");
    QTest::addColumn<QString>("rateType");
    QTest::addColumn<double>("rate");
    QTest::newRow("first hour") << u"2026-11-14"_s << 3 << 8 << u""_s << 60.5;
    QTest::newRow("last hour") << u"2026-11-14"_s << 3 << 17 << u""_s << 60.5;
    QTest::newRow("next band") << u"2026-11-14"_s << 3 << 18 << u""_s << 80.0;
    QTest::newRow("before") << u"2026-11-14"_s << 3 << 7 << u""_s << 0.0;
    QTest::newRow("midnight is 0") << u"2026-11-14"_s << 3 << 24 << u""_s << 90.0;
    QTest::newRow("after midnight") << u"2026-11-14"_s << 3 << 2 << u""_s << 90.0;
    QTest::newRow("member") << u"2026-11-14"_s << 3 << 18 << u"member"_s << 40.0;
    QTest::newRow("no such rate") << u"2026-11-14"_s << 3 << 18 << u"specialgroup4"_s << 0.0;
    QTest::newRow("other field") << u"2026-11-14"_s << 4 << 18 << u""_s << 0.0;
    QTest::newRow("Sunday") << u"2026-11-15"_s << 3 << 18 << u""_s << 0.0;
}

void tst_Slots::rates()
{
    const QString row =
        u"INSERT INTO tbl_rate SET r_day='Saturday', r_field=3, r_special='%1', r_timestart=%2, r_timestop=%3, "
        "r_rate=%4; "_s;
    m_server->exec(row.arg(u""_s, u"8"_s, u"17"_s, u"60.5"_s) + row.arg(u""_s, u"18"_s, u"23"_s, u"80"_s) +
                   row.arg(u""_s, u"0"_s, u"2"_s, u"90"_s) + row.arg(u"member"_s, u"8"_s, u"23"_s, u"40"_s));
    QFETCH(QString, day);
    QFETCH(int, field);
    QFETCH(int, hour);
    QFETCH(QString, rateType);
    Database database(m_server->connectionString());
    DbConnection{database};
    m_server->startLog();
    QTEST(CalcFieldRate(database, qint16(field), qint16(hour), rateDayName(day), rateType), "rate");
    const QString hourText = QString::number(hour % 24);
    QCOMPARE(m_server->takeLog(),
             QStringList{u"SELECT * from tbl_rate where r_day LIKE \""_s +
                         (day == saturday ? u"Saturday"_s : u"Sunday"_s) + u"\" AND r_field="_s +
                         QString::number(field) + u" AND r_special = \""_s + rateType + u"\" AND r_timestart<="_s +
                         hourText + u" and r_timestop>="_s + hourText});
}

QTEST_GUILESS_MAIN(tst_Slots)
#include "tst_Slots.moc"
