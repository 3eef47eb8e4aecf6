#include "booking/Booking.h"

#include "booking/Pasting.h"
#include "booking/RemarkLog.h"
#include "support/DrawnRows.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QProcess>
#include <QTest>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

const QString saturday = u"2026-11-14"_s;
constexpr int raceSlots = 2000;

BookingRequest request(const QString &date, const QString &hour, int field, const QString &name = u"Team A"_s)
{
    return {{date, hour, field}, {name, u"FC"_s, u"555"_s}};
}

/// The n-th slot of the race: the hours of the days from a Monday on, one field.
SlotKey raceSlot(int n)
{
    const auto hours = hoursOfDay({8, 2});
    const auto size = int(hours.size());
    const QDate day = QDate(2027, 1, 4).addDays(n / size);
    return {day.toString(Qt::ISODate), hourRangeText(hours[std::size_t(n % size)]).left(5), 6};
}

/// One counter of the race, a process of its own: says that it is ready, waits for the start and books every slot.
/// Prints how many it got.
int race(const QString &connectionString, int counter)
{
    ScriptedPrompts prompts;
    Station station(testSettings(connectionString, counter), prompts,
                    [] { return QDateTime(QDate(2026, 11, 14), QTime(14, 59, 59)); });
    const QString name = u"Counter "_s + QString::number(counter);
    DbConnection{station.database};
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    int booked = 0;
    for (int n = 0; n < raceSlots; ++n) {
        const SlotKey slot = raceSlot(n);
        const auto outcome = doBooking(station, u"anna"_s, request(slot.day, slot.hourText, slot.field, name));
        if (outcome == BookingOutcome::Booked)
            ++booked;
        else if (outcome != BookingOutcome::AlreadyBooked)
            return 1;
    }
    std::printf("%d\n", booked);
    return 0;
}

} // namespace

/// From the question for a slot to its history.
class tst_Booking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void statements_data()
    {
        // What stands on the parent's slot, and what is sent: the words stand for the statements below.
        drawnRows(uR"(
            alone                           | 7 |                                             | look; book; remark
            from the waiting list           | 7 | waiting                                     | look; book; unlist; remark
            partners                        | 3 |                                             | look; book; remark; partner 4; shared 4; partner 5; shared 5
            parent, first                   | 5 |                                             | look; book; remark; parent; mark; partially
            parent, next                    | 5 | b_bookername='Partially Shared', b_shared=1 | look; book; remark; parent; raise; partially
            parent with a booker of its own | 5 | b_bookername='Team B'                       | look; book; remark; parent; mark; partially
        )"_s);
    }

    void statements()
    {
        const QString other = u"INSERT INTO tbl_booking SET b_datetime='SLOT', b_bookertel='', b_bookerorg='', "_s;
        const QString remark =
            u"INSERT INTO tbl_remark SET m_dotime='2026-11-14 14:59:59', m_datetime='SLOT', m_remark='"_s;
        const QString remarkEnd = u", m_staff='anna', m_actiontime='14 Nov 02:59:59 PM'"_s;
        const QMap<QString, QString> texts{
            {u"look"_s, u"SELECT * FROM tbl_booking WHERE b_datetime='SLOT' AND b_field=FIELD"_s},
            {u"book"_s, u"INSERT INTO tbl_booking SET b_datetime='SLOT', b_bookertel='5\\'5', b_bookerorg='\\'', "
                        "b_bookername='O\\'Neil', b_field=FIELD, b_specialrate='member'"_s},
            {u"remark"_s, QString(remark).replace(u", m_datetime"_s, u",  m_datetime"_s) +
                              u" O\\'Neil 5\\'5', m_job='book' ,m_field=FIELD"_s + remarkEnd},
            {u"unlist"_s, u"DELETE FROM tbl_waitlist where w_id='12'"_s},
            {u"partner"_s, other + u"b_bookername='Shared Booking', b_field=FIELD, b_specialrate=''"_s},
            {u"shared"_s, remark + u" shared booking', m_job='book' ,m_field=FIELD"_s + remarkEnd},
            {u"parent"_s, u"SELECT * FROM tbl_booking where b_datetime='SLOT' AND b_field=3"_s},
            {u"mark"_s,
             other + u"b_bookername= 'Partially Shared'  , b_shared= b_shared + 1, b_field=3, b_specialrate=''"_s},
            {u"raise"_s, u"UPDATE tbl_booking SET b_shared= b_shared + 1 where b_datetime='SLOT' AND b_field=3"_s},
            {u"partially"_s, remark + u" partially booked field 3', m_job='book' ,m_field=3"_s + remarkEnd}};
        const auto [field, standing, words] = cells<3>();
        QStringList sent;
        for (const QString &word : listOf(words))
            sent += texts.value(word.section(u' ', 0, 0))
                        .replace(u"SLOT"_s, u"2026-11-14 18:00:00"_s)
                        .replace(u"FIELD"_s, word.contains(u' ') ? word.section(u' ', 1) : field);
        const bool fromWaitingList = standing == u"waiting";
        if (!standing.isEmpty() && !fromWaitingList)
            m_server.exec(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_field=3, "_s + standing);
        TestStation station(m_server);
        m_server.exec(u"INSERT INTO tbl_waitlist SET w_id=12"_s);
        BookingRequest booking{{saturday, u"18:00"_s, field.toInt()}, {u"O'Neil"_s, u"'"_s, u"5'5"_s, u"member"_s}};
        if (fromWaitingList)
            booking.fromWaitingList = u"12"_s;
        m_server.startLog();
        QCOMPARE(doBooking(station, u"anna"_s, booking), BookingOutcome::Booked);
        QCOMPARE(m_server.takeLog(), sent);
        // Taken now: the look is all that happens.
        m_server.startLog();
        QCOMPARE(doBooking(station, u"anna"_s, booking), BookingOutcome::AlreadyBooked);
        QCOMPARE(m_server.takeLog().size(), 1);
    }

    void clock_data()
    {
        drawnRows(uR"(
            going on          | 2026-11-14 14:59:59 | 2026-11-14 | 14:00 | booked
            over              | 2026-11-14 15:00:00 | 2026-11-14 | 14:00 | past
            month end         | 2026-11-30 23:59:59 | 2026-11-30 | 24:00 | booked
            after the month   | 2026-12-01 00:59:59 | 2026-11-30 | 24:00 | booked
            midnight over     | 2026-12-01 01:00:00 | 2026-11-30 | 24:00 | past
            last hour over    | 2027-01-01 03:00:00 | 2026-12-31 | 02:00 | past
            leap day          | 2028-02-29 00:30:00 | 2028-02-28 | 24:00 | booked
            no hour of a day  | 2026-11-14 14:59:59 | 2026-11-20 | 00:00 | past
            after closing     | 2026-11-14 14:59:59 | 2026-11-20 | 03:00 | past
        )"_s);
    }

    void clock()
    {
        const auto [now, day, hour, outcome] = cells<4>();
        const bool booked = outcome == u"booked";
        TestStation station(m_server);
        station.setNow(now);
        QCOMPARE(doBooking(station, u"anna"_s, request(day, hour, 8)),
                 booked ? BookingOutcome::Booked : BookingOutcome::PreviousEntry);
        const QString slot = day + u' ' + hour + u":00|8"_s;
        QCOMPARE(bookings(), booked ? QStringList{slot + u"|Team A|0"_s} : QStringList());
        QCOMPARE(m_server.rows(u"SELECT m_datetime, m_field, m_dotime FROM tbl_remark"_s),
                 booked ? QStringList{slot + u'|' + now} : QStringList());
    }

    void backslashAtTheEnd()
    {
        TestStation station(m_server);
        const std::vector<Booker> bookers{{u"Team\\"_s, u"FC"_s, u"555"_s, u""_s},
                                          {u"Team'\\"_s, u""_s, u""_s, u"member"_s},
                                          {u"Team"_s, u"FC\\"_s, u"555"_s, u""_s},
                                          {u"Team"_s, u"FC"_s, u"555\\"_s, u"member"_s}};
        for (const Booker &booker : bookers)
            QVERIFY_EXCEPTION_THROWN(doBooking(station, u"anna"_s, {{saturday, u"18:00"_s, 3}, booker}), DbError);
        QCOMPARE(m_server.rows(u"SELECT * FROM tbl_remark"_s) + bookings(), QStringList());
        QCOMPARE(doBooking(station, u"anna"_s, request(saturday, u"18:00"_s, 8)), BookingOutcome::Booked);
    }

    void beforeTheBookerIsAsked_data()
    {
        drawnRows(uR"(
            free                    | >14:00; >24:00              | verify -> anna staff                   | anna
            administrator           | >15:00                      | verify -> boss admin                   | boss
            nobody confirms         | >15:00                      | verify -> nobody                       |
            past comes before taken | >13:00 A                    | refuse: You cannot book previous entry |
            first row first         | >15:00 A; >13:00            | refuse: You cannot book previous entry |
            last row too            | >15:00; >16:00; >02:00 A    | refuse: The field already being booked |
            marks are taken         | 15:00 A; >16:00 +15         | refuse: The field already being booked |
            others do not matter    | 13:00 A; >16:00             | verify -> anna staff                   | anna
        )"_s);
    }

    void beforeTheBookerIsAsked()
    {
        const auto [day, script, confirmedBy] = cells<3>();
        TestStation station(m_server, {script});
        const auto verification = startBooking(station, drawnDay(saturday, 2, listOf(day)));
        QCOMPARE(verification ? verification->staffName : u""_s, confirmedBy);
    }

    void selectionGoesOnAfterARefusal()
    {
        // Between the look at the grid and the booking, another counter took 17:00 and the clock went on.
        m_server.exec(
            u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 17:00:00', b_field=8, b_bookername='Team B'"_s);
        TestStation station(m_server,
                            {u"refuse: You cannot book previous entry"_s, u"refuse: The field already being booked"_s});
        station.setNow(u"2026-11-14 15:00:00"_s);
        bookSelection(station, u"anna"_s, drawnDay(saturday, 8, {u">14:00"_s, u">17:00"_s, u">24:00"_s, u">01:00"_s}),
                      {u"Team A"_s, u""_s, u""_s});
        QCOMPARE(bookings(), QStringList({u"2026-11-14 17:00:00|8|Team B|0"_s, u"2026-11-14 24:00:00|8|Team A|0"_s,
                                          u"2026-11-14 01:00:00|8|Team A|0"_s}));
    }

    void databaseErrorEndsTheSelection()
    {
        m_server.exec(u"RENAME TABLE tbl_remark TO hidden"_s);
        TestStation station(m_server);
        std::vector<int> handled;
        QVERIFY_EXCEPTION_THROWN(bookSelection(station, u"anna"_s, drawnDay(saturday, 3, {u">16:00"_s, u">17:00"_s}),
                                               {u"A"_s, u""_s, u""_s}, &handled),
                                 DbError);
        QVERIFY(handled.empty());
        QCOMPARE(bookings(), QStringList());
    }

    void history()
    {
        // Later rows carry earlier times: the order is the rows' own.
        m_server.exec(uR"(INSERT INTO tbl_remark (m_dotime, m_job, m_staff, m_remark, m_datetime, m_field, m_actiontime)
        VALUES ('2026-11-20', 'book', 'anna', ' Team %1 😀 555', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-19', 'extra time', 'ben', ' for player adding 15 minutes more ', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-18', 'book', '', ' nobody', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-17', 'change rate', 'boss', ' set member rate for Team A 24:00', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-16', 'delete extra time', 'ben', ' do not want extratime.', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-15', 'cancel', 'anna', 'it\'s raining', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-14', 'paint', 'anna', 'x', '2026-11-14 24:00:00', 2, 't'),
        ('2026-11-13', 'book', 'anna', ' other field', '2026-11-14 24:00:00', 1, 't'),
        ('2026-11-12', 'book', 'anna', ' other hour', '2026-11-14 23:00:00', 2, 't'))"_s);
        Database database(m_server.connectionString());
        const QString remarks = u"t: anna book Team %1 😀 555\r\n"
                                "t: ben add extra time for player adding 15 minutes more \r\n"
                                "t: boss change rate set member rate for Team A 24:00\r\n"
                                "t: ben delete extra time \r\n"
                                "t: anna cancel because booker said 'it's raining'\r\n"_s;
        QCOMPARE(slotHistory(database, {saturday, u"24:00"_s, 2}), remarks);

        m_server.exec(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 24:00:00', b_field=2, b_bookername='A', "
                      "b_specialrate='specialgroup1', b_staffname='olga'"_s);
        m_server.startLog();
        QCOMPARE(slotHistory(database, {saturday, u"24:00"_s, 2}),
                 remarks + u"old record : olga book\r\nSpecial Rate Package = specialgroup1"_s);
        QCOMPARE(m_server.takeLog(),
                 QStringList({u"SELECT m_staff, m_job, m_remark, m_actiontime from tbl_remark where "
                              "m_datetime=\"2026-11-14 24:00:00\" AND m_field=2 ORDER BY m_id ASC"_s,
                              u"SELECT b_specialrate, b_staffname from tbl_booking where "
                              "b_datetime=\"2026-11-14 24:00:00\" AND b_field=2"_s}));
        QCOMPARE(slotHistory(database, {saturday, u"09:00"_s, 2}), QString());
    }

    void twoCounters_data()
    {
        QTest::addColumn<bool>("guarded");
        QTest::newRow("never double") << true;
        QTest::newRow("double without the key") << false; // so that the row above is known to see
    }

    void twoCounters()
    {
        QFETCH(bool, guarded);
        if (!guarded)
            m_server.exec(u"ALTER TABLE tbl_booking DROP KEY slot_of_one_booker, ADD KEY (b_datetime, b_field)"_s);
        QProcess counters[2];
        for (int i = 0; i < 2; ++i) {
            counters[i].setProcessChannelMode(QProcess::ForwardedErrorChannel);
            counters[i].start(QCoreApplication::applicationFilePath(),
                              {u"--race"_s, m_server.connectionString(), QString::number(i + 1)});
            QVERIFY(counters[i].waitForReadyRead(30'000));
            QCOMPARE(counters[i].readLine(), "ready\n");
        }
        for (QProcess &counter : counters) {
            counter.write("\n");
            QVERIFY(counter.waitForBytesWritten());
        }
        int booked = 0;
        for (QProcess &counter : counters) {
            QVERIFY(counter.waitForFinished(60'000));
            QCOMPARE(counter.exitCode(), 0);
            const int own = counter.readAll().trimmed().toInt();
            QVERIFY2(own > 0, "One counter never came first: this was no race");
            booked += own;
        }
        const QString counts =
            u"SELECT COUNT(*), COUNT(DISTINCT b_datetime), (SELECT COUNT(*) FROM tbl_remark) FROM tbl_booking"_s;
        const QString number = QString::number(booked);
        QCOMPARE(m_server.rows(counts), QStringList{number + u'|' + QString::number(raceSlots) + u'|' + number});
        if (guarded)
            QCOMPARE(booked, raceSlots);
        else
            QVERIFY(booked > raceSlots);
    }

private:
    [[nodiscard]] QStringList bookings() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_shared FROM tbl_booking ORDER BY b_id"_s);
    }

    PrivateServer m_server;
};

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4 && arguments[1] == u"--race")
        return race(arguments[2], arguments[3].toInt());
    tst_Booking test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_Booking.moc"
