#include "app/BusinessDay.h"
#include "schedule/DayModel.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr WorkingHours hours{8, 2};
const QString saturday = u"2026-11-14"_s;

QDateTime moment(const QString &text)
{
    return QDateTime::fromString(text, u"yyyy-MM-dd HH:mm:ss"_s);
}

// The rows that say something, one line each: "10:00 Team A|555|Paid 50.00".
QStringList drawn(const std::vector<DayRow> &rows)
{
    QStringList lines;
    for (const DayRow &row : rows)
        if (!row.booker.isEmpty() || !row.telephone.isEmpty() || !row.paid.isEmpty())
            lines << row.hourText() + u' ' + QStringList{row.booker, row.telephone, row.paid}.join(u'|');
    return lines;
}

} // namespace

/// The business day: its hours, where they really fall, what the database says of them and how the grid marks them.
class tst_Day : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TZ", "Europe/Berlin"); }
    void init() { m_server.freshDatabase(); }

    void hourTexts()
    {
        QStringList texts;
        for (const DayRow &row : emptyDay(hours))
            texts << row.hourRange + u" = "_s + row.twelveHour;
        QCOMPARE(texts.size(), 19);
        QCOMPARE(texts.mid(0, 2).join(u", "_s), u"08:00 to 09:00 = 08:00 AM, 09:00 to 10:00 = 09:00 AM"_s);
        QCOMPARE(texts.mid(4, 2).join(u", "_s), u"12:00 to 13:00 = 12:00 PM, 13:00 to 14:00 = 01:00 PM"_s);
        QCOMPARE(texts.mid(15).join(u", "_s), u"23:00 to 24:00 = 11:00 PM, 24:00 to 01:00 = 12:00 AM, "
                                              "01:00 to 02:00 = 01:00 AM, 02:00 to 03:00 = 02:00 AM"_s);
        QCOMPARE(hoursOfDay({23, 0}), (std::vector<int>{23, 24}));
        QCOMPARE(hoursOfDay({2, 1}).size(), std::size_t(24));
    }

    void realDates()
    {
        // Day, hour, and the date on which it falls; a dash for an hour that the day does not have.
        const QString cases =
            u"2026-11-14 07:00 - | 2026-11-14 08:00 2026-11-14 | 2026-11-14 23:00 2026-11-14 | "
            "2026-11-14 24:00 2026-11-15 | 2026-11-14 00:00 - | 2026-11-14 01:00 2026-11-15 | "
            "2026-11-14 02:00 2026-11-15 | 2026-11-14 03:00 - | 2026-11-30 24:00 2026-12-01 | "
            "2026-11-30 02:00 2026-12-01 | 2026-12-31 23:00 2026-12-31 | 2026-12-31 24:00 2027-01-01 | "
            "2028-02-28 24:00 2028-02-29 | 2028-02-29 01:00 2028-03-01 | 2027-02-28 24:00 2027-03-01"_s;
        for (const QString &line : cases.split(u" | "_s)) {
            const QDate date = ExactDate(line.mid(11, 5), line.left(10), hours);
            QCOMPARE(line.left(17) + (date.isValid() ? date.toString(Qt::ISODate) : u"-"_s), line);
        }
        // A moment, and the business date that it belongs to; none at the start hour, at midnight and at the end hour.
        const QString moments =
            u"2026-11-14 08:30:00 - | 2026-11-14 09:00:00 2026-11-14 | 2026-11-14 23:59:59 2026-11-14 | "
            "2026-11-15 00:30:00 - | 2026-11-15 01:30:00 2026-11-14 | 2026-11-15 02:30:00 - | "
            "2026-11-15 07:59:59 - | 2026-12-01 01:00:00 2026-11-30 | 2028-03-01 01:59:59 2028-02-29"_s;
        for (const QString &line : moments.split(u" | "_s)) {
            const QDate date = AdjustableDate(moment(line.left(19)), hours);
            QCOMPARE(line.left(20) + (date.isValid() ? date.toString(Qt::ISODate) : u"-"_s), line);
        }
    }

    void hoursFromNow()
    {
        // Now, day and hour of a slot, and the clock-hour boundaries between; -99 for an hour that the day does not
        // have. The clock on the wall counts, also in the night of 29 March, in which it is put forward from 2 to 3.
        const QString cases = u"2026-11-14 14:00:00 2026-11-14 14:00 0 | 2026-11-14 14:59:59 2026-11-14 14:00 0 | "
                              "2026-11-14 15:00:00 2026-11-14 14:00 -1 | 2026-11-14 14:59:59 2026-11-14 15:00 1 | "
                              "2026-11-14 23:59:59 2026-11-14 24:00 1 | 2026-11-15 00:00:00 2026-11-14 24:00 0 | "
                              "2026-11-15 00:59:59 2026-11-14 24:00 0 | 2026-11-15 01:00:00 2026-11-14 24:00 -1 | "
                              "2026-11-15 01:30:00 2026-11-14 02:00 1 | 2026-11-15 01:30:00 2026-11-15 01:00 24 | "
                              "2026-11-30 23:30:00 2026-11-30 01:00 2 | 2028-02-28 22:00:00 2028-02-28 24:00 2 | "
                              "2028-02-29 00:30:00 2028-02-29 08:00 8 | 2026-12-31 23:00:00 2026-12-31 02:00 3 | "
                              "2026-03-29 01:30:00 2026-03-28 02:00 1 | 2026-03-29 01:30:00 2026-03-29 08:00 7 | "
                              "2026-11-14 14:00:00 2026-11-20 05:00 -99 | 2026-11-14 14:00:00 2026-11-20 00:00 -99"_s;
        for (const QString &line : cases.split(u" | "_s)) {
            const qint64 left = hoursUntil(moment(line.left(19)), line.mid(20, 10), line.mid(31, 5), hours);
            QCOMPARE(line.left(37) + QString::number(std::max<qint64>(left, -99)), line);
        }
    }

    void aDayFromTheDatabase()
    {
        book(u"2026-11-14 08:00:00"_s, 3, u"b_bookername='O\\'Neil %1 😀', b_bookertel='5\\'5', b_paid=1234.5"_s);
        book(u"2026-11-14 10:00:00"_s, 3, u"b_bookername='Quarter', b_extratime=15"_s);
        book(u"2026-11-14 12:00:00"_s, 3, u"b_bookername='Before its neighbour', b_extratime=30"_s);
        book(u"2026-11-14 13:00:00"_s, 3, u"b_bookername='Neighbour', b_bookertel='6', b_extratime=45"_s);
        book(u"2026-11-14 23:00:00"_s, 3, u"b_bookername='Partially Shared', b_shared=2, b_extratime=15"_s);
        book(u"2026-11-14 01:00:00"_s, 3, u"b_bookername='After midnight', b_extratime=30, b_paid=0.05"_s);
        book(u"2026-11-15 01:00:00"_s, 3, u"b_bookername='Next business day'"_s);
        book(u"2026-11-14 09:00:00"_s, 2, u"b_bookername='Other field'"_s);
        // A booker beside marks, in whatever order the server tells of them.
        for (const QString &name : {u"Partially Shared"_s, u"Zoe', b_bookertel='7', b_paid='5"_s, u"Shared Booking"_s})
            book(u"2026-11-14 17:00:00"_s, 3, u"b_bookername='"_s + name + u"'"_s);
        for (const QString &name : {u"Shared Booking"_s, u"Abel"_s, u"Partially Shared"_s})
            book(u"2026-11-14 19:00:00"_s, 3, u"b_bookername='"_s + name + u"'"_s);
        for (const QString &foreign : {u"00:00"_s, u"03:00"_s, u"07:00"_s})
            book(u"2026-11-14 "_s + foreign + u":00"_s, 3, u"b_bookername='No row for it', b_extratime=30"_s);

        TestStation station(m_server);
        station.setNow(u"2026-11-14 09:10:00"_s);
        m_server.startLog();
        const DaySchedule schedule = readDay(station, saturday, 3);
        const QString played =
            u"SELECT b_bookername, b_field from tbl_booking where b_datetime=\"2026-11-14 %1:00:00\" "
            "ORDER BY b_field ASC"_s;
        QCOMPARE(m_server.takeLog(),
                 (QStringList{u"SELECT b_datetime, b_bookername,b_bookertel,b_paid,b_extratime from tbl_booking where "
                              "b_datetime LIKE '%2026-11-14%' AND b_field=3"_s,
                              u"SELECT b_datetime, b_field, b_extratime FROM tbl_booking WHERE b_datetime LIKE "
                              "'2026-11-14%' AND b_field IN (4, 5) AND b_extratime>0"_s,
                              played.arg(u"09"_s), played.arg(u"08"_s), played.arg(u"10"_s)}));
        const QString extra = u"\u02C6 + %1 hour ||"_s;
        QCOMPARE(drawn(schedule.rows),
                 (QStringList{u"08:00 O'Neil %1 😀|5'5|Paid 1,234.50"_s, u"10:00 Quarter||"_s,
                              u"11:00 "_s + extra.arg(QChar(0xBC)), u"12:00 Before its neighbour||"_s,
                              u"13:00 Neighbour|6|"_s, u"14:00 "_s + extra.arg(QChar(0xBE)), u"17:00 Zoe|7|Paid 5.00"_s,
                              u"19:00 Abel||"_s, u"23:00 Partially Shared||"_s, u"24:00 "_s + extra.arg(QChar(0xBC)),
                              u"01:00 After midnight||Paid 0.05"_s, u"02:00 "_s + extra.arg(QChar(0xBD))}));
        QCOMPARE(schedule.rows.size(), std::size_t(19));
        QVERIFY_THROWS_EXCEPTION(DbError, m_server.exec(u"DROP TABLE tbl_booking"_s); readDay(station, saturday, 3));
    }

    // Field 3 is a pitch with the halves 4 and 5.
    void extraTimeOnTheSameGround()
    {
        book(u"2026-11-14 10:00:00"_s, 3, u"b_bookername='Whole', b_extratime=45"_s);
        book(u"2026-11-14 15:00:00"_s, 4, u"b_bookername='Half', b_extratime=15"_s);
        book(u"2026-11-14 02:00:00"_s, 4, u"b_bookername='Last', b_extratime=15"_s);
        TestStation station(m_server);
        const auto takenOn = [&](int field) {
            QStringList taken;
            for (const DayRow &row : readDay(station, saturday, field).rows)
                if (row.isGroundTaken)
                    taken << row.hourText() + u' ' + row.booker + (row.isExtraTime() ? u" (own)"_s : u""_s) +
                                 (stateOf(row, false) == RowState::ExtraTime ? u""_s : u" (not drawn)"_s);
            return taken;
        };
        QCOMPARE(takenOn(3), QStringList{u"16:00 Taken: Field 5 +15 min"_s});
        QCOMPARE(takenOn(4), QStringList{u"11:00 Taken: Field 4 +45 min"_s});
        QCOMPARE(takenOn(5), QStringList{u"11:00 Taken: Field 4 +45 min"_s});
        QCOMPARE(takenOn(6), QStringList());
    }

    void playLists_data()
    {
        // The hour before, the present hour, the next one.
        drawnRows(uR"(
            by day          | 10:30:00 | 2 - B9,          | 0 - A10,11 - L10, |
            before midnight | 23:59:59 |                  | 1 - P23,          | 3 - M24,5 - N24,
            midnight        | 00:00:00 | 1 - P23,         | 3 - M24,5 - N24,  | 4 - Q01,
            after midnight  | 01:00:00 | 3 - M24,5 - N24, | 4 - Q01,          |
        )"_s);
    }

    void playLists()
    {
        m_server.exec(
            u"INSERT INTO tbl_booking (b_datetime, b_field, b_bookername) VALUES ('2026-11-14 09:00:00', 2, 'B9'), "
            "('2026-11-14 10:00:00', 11, 'L10'), ('2026-11-14 10:00:00', 0, 'A10'), "
            "('2026-11-14 23:00:00', 1, 'P23'), ('2026-11-14 24:00:00', 5, 'N24'), "
            "('2026-11-14 24:00:00', 3, 'M24'), ('2026-11-14 01:00:00', 4, 'Q01'), "
            "('2026-11-15 10:00:00', 0, 'Next day')"_s);
        const auto [now, previous, current, next] = cells<4>();
        TestStation station(m_server);
        station.setNow(u"2026-11-14 "_s + now);
        const DaySchedule day = readDay(station, saturday, 8);
        QString lists = QStringList{day.previousPlayers, day.currentPlayers, day.nextPlayers}.join(u'|');
        QCOMPARE(lists.replace(u"\r\n"_s, u","_s), (QStringList{previous, current, next}).join(u'|'));
    }

    void presentHourAndStates()
    {
        DayModel model;
        model.build(hours);
        const auto day = drawnDay(saturday, 0,
                                  {u"08:00 Team A"_s, u"09:00 Team A paid 5.00"_s, u"10:00 +30"_s,
                                   u"11:00 Shared Booking"_s, u"12:00 Partially Shared"_s});
        const auto marks = [&](int clockHour) {
            std::vector<bool> past(day.rows.size(), false);
            past[0] = past[5] = true;
            model.show(day.rows, past, rowOfClockHour(hours, clockHour));
            QStringList marked;
            for (int row = 0; row < model.rowCount(); ++row)
                for (int column = 0; column < model.columnCount(); ++column)
                    if (const int mark = model.index(row, column).data(DayModel::MarkRole).toInt();
                        mark != DayModel::NoMark)
                        marked << model.index(row, column).data().toString() +
                                      (mark == DayModel::PresentHour ? u" now"_s : u" before"_s);
            return marked.join(u", "_s);
        };
        QCOMPARE(marks(8), u"08:00 AM now"_s);
        QCOMPARE(marks(0), u"11:00 PM before, 12:00 AM now"_s);
        QCOMPARE(marks(2), u"01:00 AM before, 02:00 AM now"_s);
        QCOMPARE(marks(3), QString());

        QStringList spoken;
        for (const int row : {0, 1, 2, 3, 4, 5, 6})
            spoken << model.index(row, DayModel::HourRange).data(Qt::AccessibleTextRole).toString().mid(14);
        QCOMPARE(spoken.join(u", "_s), u", booked, past, , paid, , extra time, , shared, , shared, , past, , free"_s);
        marks(9);
        spoken.clear();
        for (const int column : {1, 2})
            for (const int row : {0, 1, 5, 6})
                spoken << model.index(row, column).data(Qt::AccessibleTextRole).toString();
        QCOMPARE(spoken.join(u'|'), u"08:00 AM, hour before|09:00 AM, present hour|01:00 PM|02:00 PM|Team A|Team A|"
                                    "past|free"_s);

        QList<int> states;
        for (int row = 0; row < 7; ++row)
            states << model.index(row, DayModel::BookerName).data(DayModel::StateRole).toInt();
        QCOMPARE(states,
                 (QList<int>{int(RowState::Booked), int(RowState::Paid), int(RowState::ExtraTime),
                             int(RowState::Shared), int(RowState::Shared), int(RowState::Past), int(RowState::Free)}));
        model.showUnread();
        QCOMPARE(model.index(0, 0).data(Qt::AccessibleTextRole).toString(), u"08:00 to 09:00, not read"_s);
    }

private:
    void book(const QString &dateTime, int field, const QString &columns) const
    {
        m_server.exec(u"INSERT INTO tbl_booking SET b_datetime='"_s + dateTime + u"', b_field="_s +
                      QString::number(field) + u", "_s + columns);
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Day)
#include "tst_Day.moc"
