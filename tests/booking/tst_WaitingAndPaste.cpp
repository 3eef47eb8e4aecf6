#include "booking/BlockBooking.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString saturday = u"2026-11-14"_s;
const QString confirmed = u"verify -> anna staff"_s;
const QString taken = u"refuse: The field already being booked"_s;

QStringList ids(const std::vector<WaitingEntry> &entries)
{
    QStringList texts;
    for (const WaitingEntry &entry : entries)
        texts << entry.id + u' ' + entry.booker.name;
    return texts;
}

std::vector<BlockBookingHour> block(
    TestStation &station, const DaySelection &selection, int weeks, const std::function<void(int)> &tell = [](int) {})
{
    std::vector<BlockBookingHour> results;
    bookBlock(station, station.clipboard, selection, weeks, tell, results);
    return results;
}

} // namespace

/// The waiting list, and what staff hold for pasting: on one hour, on several, over weeks.
class tst_WaitingAndPaste : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server.freshDatabase();
        m_server.exec(
            u"CREATE TABLE tbl_booking_clipboard2 LIKE tbl_booking_clipboard1;"
            "INSERT INTO tbl_booking SET b_datetime='2026-11-14 24:00:00', b_field=8, b_bookername='O\\'Neil %1 😀', "
            "b_bookerorg='it\\'s', b_bookertel='5\\'5', b_specialrate='member';"
            "INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_field=8, b_bookername='Standing';"
            "INSERT INTO tbl_booking SET b_datetime='2026-11-28 19:00:00', b_field=8, b_bookername='Standing';"
            "INSERT INTO tbl_waitlist SET w_id=11, w_datetime='2026-11-14 19:00:00', w_field=2, "
            "w_bookername='Wait\\'er', w_bookerorg='WO', w_bookertel='77', w_specialrate='student', "
            "w_staffname='ben';"
            "INSERT INTO tbl_waitlist SET w_id=12, w_datetime='2026-11-14 24:00:00', w_field=2, w_bookername='Late';"
            "INSERT INTO tbl_waitlist SET w_id=13, w_datetime='2026-11-14 19:00:00', w_field=3, w_bookername='Other';"
            "INSERT INTO tbl_waitlist SET w_id=14, w_datetime='2026-11-15 19:00:00', w_field=2, w_bookername='Day';"
            "INSERT INTO tbl_waitlist SET w_id=15, w_datetime='2026-11-14 19:00:00', w_field=2, w_bookername='Next'"_s);
    }

    void waitingList()
    {
        QCOMPARE(wantedHours({23, 1}), std::vector<QString>({u"23:00:00"_s, u"24:00:00"_s, u"01:00:00"_s}));
        Database database(m_server.connectionString());
        QCOMPARE(ids(waitingFor(database, {saturday, u"19:00"_s, 2})), QStringList({u"11 Wait'er"_s, u"15 Next"_s}));
        QVERIFY(waitingFor(database, {saturday, u"18:00"_s, 2}).empty());
        m_server.startLog();
        TestStation station(m_server);
        addWaitingEntry(station, u"an'na"_s, saturday, u"24:00:00"_s, 2, {u"O'Neil"_s, u"'"_s, u"5'5"_s, u"member"_s});
        const auto entries = readWaitingList(database, saturday, 2);
        QCOMPARE(m_server.takeLog(),
                 QStringList({u"INSERT INTO tbl_waitlist SET w_datetime='2026-11-14 24:00:00', w_bookertel='5\\'5', "
                              "w_bookerorg='\\'', w_bookername='O\\'Neil', w_field=2, w_specialrate='member', "
                              "w_staffname='an\\'na'"_s,
                              u"SELECT * from tbl_waitlist WHERE w_datetime LIKE '2026-11-14%' AND w_field='2'"_s}));
        QStringList found = ids(entries);
        found.sort();
        QCOMPARE(found, QStringList({u"11 Wait'er"_s, u"12 Late"_s, u"15 Next"_s, u"16 O'Neil"_s}));
        const Booker waiter{u"Wait'er"_s, u"WO"_s, u"77"_s, u"student"_s};
        for (const WaitingEntry &entry : entries)
            if (entry.id == u"11")
                QCOMPARE(entry, (WaitingEntry{u"11"_s, waiter, u"2026-11-14 19:00:00"_s, 2, u"ben"_s}));
    }

    void deletingAnEntry()
    {
        const QString question = u"confirm: Confirm delete? [Important] -> "_s;
        TestStation station(
            m_server, {question + u"no"_s, question + u"yes"_s, u"verify -> nobody"_s, question + u"yes"_s, confirmed});
        m_server.startLog();
        QVERIFY(!deleteWaitingEntry(station, u"12"_s));
        QVERIFY(!deleteWaitingEntry(station, u"12"_s));
        QVERIFY(deleteWaitingEntry(station, u"12"_s));
        QCOMPARE(m_server.takeLog(), QStringList{u"DELETE FROM tbl_waitlist where w_id='12'"_s});
        QVERIFY(!waiting().contains(u"12"_s));
    }

    void copyIsRefused_data()
    {
        drawnRows(uR"(
            no row            | 18:00 A                 | refuse: You cannot copy empty slot
            free              | >18:00                  | refuse: You cannot copy empty slot
            extra time        | 18:00 A; >19:00 +30     | refuse: The slot is an extra time of previous slot, use the previous slot to copy
            shared            | >18:00 Shared Booking   | refuse: You cannot copy shared booking
            partially         | >18:00 Partially Shared | refuse: You cannot copy shared booking
            cleared meanwhile | >09:00 A                | refuse: You cannot copy empty slot
        )"_s);
    }

    void copyIsRefused()
    {
        const auto [day, script] = cells<2>();
        TestStation station(m_server, {script});
        QVERIFY(!copySlot(station, station.clipboard, drawnDay(saturday, 8, listOf(day))));
        QCOMPARE(station.clipboard.source(), ClipboardSource::Nothing);
        QCOMPARE(m_server.rows(u"SELECT * FROM tbl_booking_clipboard1"_s), QStringList());
    }

    void copyAndPaste()
    {
        TestStation station(m_server, {confirmed, u"refuse: You cannot book previous entry"_s, taken}, 2);
        TestStation other(m_server);
        station.clipboard.fromWaitingList = true;
        m_server.startLog();
        QVERIFY(copySlot(station, station.clipboard, drawnDay(saturday, 8, {u">24:00 O'Neil"_s})));
        QCOMPARE(m_server.takeLog(),
                 QStringList({u"TRUNCATE TABLE tbl_booking_clipboard2"_s,
                              u"SELECT * FROM tbl_booking where b_datetime='2026-11-14 24:00:00' AND b_field=8"_s,
                              u"LOCK TABLES tbl_booking_clipboard2 WRITE"_s,
                              u"INSERT INTO tbl_booking_clipboard2 SET b_datetime='2026-11-14 24:00:00', "
                              "b_bookertel='5\\'5', b_bookerorg='it\\'s', b_bookername='O\\'Neil %1 "
                              "\\xF0\\x9F\\x98\\x80', b_field=8, "
                              "b_specialrate='member'"_s, // as the log's own table holds it
                              u"UNLOCK TABLES"_s}));
        QVERIFY(!station.clipboard.fromWaitingList);
        // Another counter's copy does not get in the way, nor does the clearing of what was copied.
        QVERIFY(copySlot(other, other.clipboard, drawnDay(saturday, 8, {u">18:00 Standing"_s})));
        m_server.exec(u"DELETE FROM tbl_booking WHERE b_datetime LIKE '%24:00:00'"_s);

        m_server.startLog();
        QVERIFY(pasteSelection(station, station.clipboard,
                               drawnDay(u"2026-11-14"_s, 8, {u">18:00"_s, u">20:00"_s, u">13:00"_s, u">24:00"_s})));
        QCOMPARE(m_server.takeLog().first(),
                 u"SELECT * FROM tbl_booking_clipboard2 where b_datetime='2026-11-14 24:00:00' AND b_field=8"_s);
        QCOMPARE(bookings(), QStringList({u"2026-11-14 20:00:00|8|O'Neil %1 😀|it's|5'5|member"_s,
                                          u"2026-11-14 24:00:00|8|O'Neil %1 😀|it's|5'5|member"_s}));
        QCOMPARE(m_server.rows(u"SELECT DISTINCT m_job, m_staff FROM tbl_remark"_s), QStringList{u"book|anna"_s});
        QCOMPARE(waiting().size(), 5);
    }

    void copyGivesItsLockBack()
    {
        m_server.exec(u"UPDATE tbl_booking SET b_bookername='broken \\\\' WHERE b_bookername<>'Standing'"_s);
        TestStation station(m_server);
        QVERIFY_EXCEPTION_THROWN(copySlot(station, station.clipboard, drawnDay(saturday, 8, {u">24:00 broken"_s})),
                                 DbError);
        QCOMPARE(station.clipboard.source(), ClipboardSource::Nothing);
        // A lock left behind would bar this connection from every other table.
        QVERIFY(copySlot(station, station.clipboard, drawnDay(saturday, 8, {u">18:00 Standing"_s})));
    }

    void cutAndPaste()
    {
        TestStation station(m_server, {u"refuse: You cannot copy empty slot"_s, u"verify -> nobody"_s,
                                       u"verify -> boss admin"_s, taken});
        QVERIFY(!cutWaitingEntry(station, station.clipboard, QString()));
        m_server.exec(u"INSERT INTO tbl_waitlist_clipboard SET w_bookername='old'"_s);
        m_server.startLog();
        QVERIFY(cutWaitingEntry(station, station.clipboard, u"11"_s));
        QCOMPARE(
            m_server.takeLog(),
            QStringList({u"DELETE FROM tbl_waitlist_clipboard WHERE w_id>0"_s,
                         u"SELECT * FROM tbl_waitlist where w_id='11'"_s,
                         u"INSERT INTO tbl_waitlist_clipboard SET w_datetime='2026-11-14 19:00:00', w_bookertel='77', "
                         "w_bookerorg='WO', w_bookername='Wait\\'er', w_field=2, w_specialrate='student', "
                         "w_staffname='ben'"_s}));
        QCOMPARE(station.clipboard.source(), ClipboardSource::WaitingList);
        QVERIFY(waiting().contains(u"11"_s));

        QVERIFY(!pasteSelection(station, station.clipboard, drawnDay(saturday, 7, {u">20:00"_s})));
        QCOMPARE(bookings().size(), 1);
        // Refused on 18:00, taken off the list by 19:00, and an ordinary booking on 20:00.
        m_server.startLog();
        QVERIFY(
            pasteSelection(station, station.clipboard, drawnDay(saturday, 8, {u">18:00"_s, u">19:00"_s, u">20:00"_s})));
        const QStringList log = m_server.takeLog();
        QCOMPARE(log.first(), u"SELECT * FROM tbl_waitlist_clipboard"_s);
        QCOMPARE(log.filter(u"DELETE"_s), QStringList{u"DELETE FROM tbl_waitlist where w_id='11'"_s});
        QCOMPARE(bookings().mid(1), QStringList({u"2026-11-14 19:00:00|8|Wait'er|WO|77|student"_s,
                                                 u"2026-11-14 20:00:00|8|Wait'er|WO|77|student"_s}));
        QCOMPARE(waiting(), QStringList({u"12"_s, u"13"_s, u"14"_s, u"15"_s}));
        QCOMPARE(station.clipboard.source(), ClipboardSource::Nothing);
        QCOMPARE(m_server.rows(u"SELECT DISTINCT m_staff FROM tbl_remark"_s), QStringList{u"boss"_s});
    }

    void nothingToPaste_data()
    {
        drawnRows(uR"(
            nothing was copied    |      | DO 0
            copy has vanished     | copy | TRUNCATE TABLE tbl_booking_clipboard1
            cut has vanished      | cut  | DELETE FROM tbl_waitlist_clipboard
            entry left the list   | cut  | UPDATE tbl_waitlist SET w_id=99 WHERE w_id=11
            another counter cut   | cut  | UPDATE tbl_waitlist_clipboard SET w_bookername='Late'
            the same booker twice | cut  | UPDATE tbl_waitlist_clipboard SET w_datetime='2026-11-14 20:00:00'
        )"_s);
    }

    void nothingToPaste()
    {
        const auto [from, meanwhile] = cells<2>();
        // Staff are told, once for the paste and once, confirmed, for the block.
        TestStation station(m_server, {u"inform"_s, confirmed, u"inform"_s});
        if (from == u"copy")
            QVERIFY(copySlot(station, station.clipboard, drawnDay(saturday, 8, {u">24:00 O'Neil"_s})));
        if (from == u"cut")
            QVERIFY(cutWaitingEntry(station, station.clipboard, u"11"_s));
        m_server.exec(meanwhile);
        const QStringList before = bookings();
        const DaySelection target = drawnDay(saturday, 7, {u">20:00"_s});
        QVERIFY(!pasteSelection(station, station.clipboard, target));
        QVERIFY(block(station, target, 4, [](int) { QFAIL("Nothing was booked, so no week is over"); }).empty());
        QCOMPARE(bookings(), before);
        QCOMPARE(waiting().size(), 5);
    }

    void overWeeks()
    {
        TestStation station(m_server, {confirmed});
        station.setNow(u"2026-11-14 19:59:59"_s);
        QVERIFY(copySlot(station, station.clipboard, drawnDay(saturday, 8, {u">24:00 O'Neil"_s})));
        QList<int> weeks;
        const auto results = block(station, drawnDay(saturday, 8, {u">18:00"_s, u">19:00"_s, u">02:00"_s}), 8,
                                   [&](int week) { weeks << week; });
        QCOMPARE(weeks, QList<int>({1, 2, 3, 4, 5, 6, 7, 8}));
        QStringList booked;
        QStringList refused;
        for (const auto &hour : results)
            (hour.outcome == BookingOutcome::Booked ? booked : refused)
                << hour.date + u' ' + hour.hour + u' ' + refusalText(hour.outcome);
        QCOMPARE(results.size(), 24U);
        QCOMPARE(refused, QStringList({u"2026-11-14 18:00 You cannot book previous entry"_s,
                                       u"2026-11-28 19:00 The field already being booked"_s}));
        QCOMPARE(booked.mid(0, 2), QStringList({u"2026-11-14 19:00 "_s, u"2026-11-14 02:00 "_s}));
        QCOMPARE(booked.last(), u"2027-01-02 02:00 "_s);
        QCOMPARE(
            m_server.rows(u"SELECT COUNT(*), COUNT(DISTINCT LEFT(b_datetime, 10)), MIN(b_specialrate) FROM tbl_booking "
                          "WHERE b_bookername='O\\'Neil %1 😀' AND b_datetime NOT LIKE '%24:00:00'"_s),
            QStringList{u"22|8|member"_s});
    }

    void blockFromTheWaitingList()
    {
        TestStation station(m_server, {u"verify -> nobody"_s, confirmed});
        QVERIFY(cutWaitingEntry(station, station.clipboard, u"11"_s));
        const DaySelection selection = drawnDay(saturday, 8, {u">18:00"_s, u">20:00"_s});
        QVERIFY(block(station, selection, 4).empty());
        m_server.startLog();
        const auto results = block(station, selection, 4);
        // Only the first booking takes the entry off the list, and each week reads the booker anew.
        const QStringList log = m_server.takeLog();
        QCOMPARE(log.count(u"DELETE FROM tbl_waitlist where w_id='11'"_s), 1);
        QCOMPARE(log.count(u"SELECT * FROM tbl_waitlist_clipboard"_s), 4);
        QCOMPARE(results.size(), 8U);
        QCOMPARE(bookings().filter(u"Wait'er|WO|77|student"_s).size(), 7);
        QVERIFY(!waiting().contains(u"11"_s));
    }

    void blockEndsWithADatabaseError()
    {
        TestStation station(m_server, {confirmed});
        QVERIFY(copySlot(station, station.clipboard, drawnDay(saturday, 8, {u">24:00 O'Neil"_s})));
        std::vector<BlockBookingHour> results;
        const auto cutAfterTwoWeeks = [&](int week) {
            if (week == 2)
                m_server.stop();
        };
        QVERIFY_EXCEPTION_THROWN(
            bookBlock(station, station.clipboard, drawnDay(saturday, 8, {u">20:00"_s}), 4, cutAfterTwoWeeks, results),
            DbError);
        m_server.start();
        QCOMPARE(results.size(), 2U);
        QCOMPARE(bookings().size(), 3);
    }

private:
    [[nodiscard]] QStringList bookings() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_bookerorg, b_bookertel, b_specialrate "
                             "FROM tbl_booking WHERE b_bookername<>'Standing' ORDER BY b_id"_s);
    }
    [[nodiscard]] QStringList waiting() const
    {
        return m_server.rows(u"SELECT w_id FROM tbl_waitlist ORDER BY w_id"_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_WaitingAndPaste)
#include "tst_WaitingAndPaste.moc"
