#include "booking/Booking.h"

#include "booking/RemarkLog.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString saturday = u"2026-11-14"_s;

BookingRequest request(const QString &date, const QString &hour, int field)
{
    return {{date, hour, field}, {u"Team A"_s, u"FC"_s, u"555"_s}};
}

} // namespace

/// From the question for a slot to its history.
class tst_Booking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void clock_data()
    {
        drawnRows(uR"(
            going on          | 2026-11-14 14:59:59 | 2026-11-14 | 14:00 | booked
            over              | 2026-11-14 15:00:00 | 2026-11-14 | 14:00 | past
            after the month   | 2026-12-01 00:59:59 | 2026-11-30 | 24:00 | booked
            midnight over     | 2026-12-01 01:00:00 | 2026-11-30 | 24:00 | past
            leap day          | 2028-02-29 00:30:00 | 2028-02-28 | 24:00 | booked
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

private:
    [[nodiscard]] QStringList bookings() const
    {
        return m_server.rows(u"SELECT b_datetime, b_field, b_bookername, b_shared FROM tbl_booking ORDER BY b_id"_s);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Booking)
#include "tst_Booking.moc"
