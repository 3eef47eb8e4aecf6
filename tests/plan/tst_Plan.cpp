#include "app/Errors.h"
#include "plan/Alerts.h"
#include "plan/HotSpots.h"
#include "plan/Lights.h"
#include "plan/PlanStatus.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// "21:00 2 Team A": hour, field and booker of 14 November, or of the day before where the line begins with "-".
QString insertOf(QString line)
{
    const QString day = line.startsWith(u'-') ? u"2026-11-13"_s : u"2026-11-14"_s;
    line.remove(u'-');
    return u"INSERT INTO tbl_booking SET b_datetime='"_s + day + u' ' + line.section(u' ', 0, 0) + u":00', b_field="_s +
           line.section(u' ', 1, 1) + u", b_bookername='"_s + line.section(u' ', 2) + u"';"_s;
}

QString setFields(const std::vector<QString> &captions)
{
    QStringList fields;
    for (std::size_t field = 0; field < captions.size(); ++field)
        if (!captions[field].isEmpty())
            fields += QString::number(field) + u'=' + captions[field];
    return fields.join(u' ');
}

// What the clock does from one moment to another, second by second: "21:55:00 refresh, 22:02:00 clear".
QString ticks(AlertClock &clock, QTime from, int seconds)
{
    QStringList done;
    for (int second = 0; second < seconds; ++second) {
        const QTime now = from.addSecs(second);
        const AlertClock::Tick tick = clock.tick(now);
        if (tick.refresh || tick.clear)
            done += now.toString(u"hh:mm:ss") + (tick.refresh ? u" refresh"_s : QString()) +
                    (tick.clear ? u" clear"_s : QString());
        if (tick.lit != (now.second() % 2 == 0))
            done += now.toString(u"hh:mm:ss") + u" blinks wrong"_s;
    }
    return done.join(u", ");
}

} // namespace

class tst_Plan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void hotSpots_data()
    {
        drawnRows(uR"(
            inside                                             | 50    | 30   | 0
            upper left corner                                  | 10    | 10   | 0
            lower right corner                                 | 100.1 | 50.7 | 0
            just outside                                       | 49.6  | 50.8 | X=50
            overlap of 0 and 3                                 | 95    | 45   | 0
            only 3                                             | 120   | 55   | 3
            only 4, written without blanks and with fractions  | 300.5 | 0.25 | 4
            where 1 would be with its fourth number            | 205   | 205  | X=205
            where 6 stands that is above the highest field     | 405   | 405  | X=405
            left of the picture                                | -7    | 30   | X=-7
        )"_s);
    }

    void hotSpots()
    {
        const QStringList corners{u"10, 10, 100.1, 50.7"_s, u"200, 200, 300"_s,    u"0, 0, 500, 500, 500"_s,
                                  u"90, 40, 150, 60"_s,     u"300.25,0,310,0.5"_s, u"400, 400, x, 410"_s,
                                  u"400, 400, 410, 410"_s};
        for (int n = 0; n < corners.size(); ++n)
            WriteSetting(u"HotSpot"_s, u"Coord"_s + QString::number(n), corners[n]);
        const HotSpots spots(u"HotSpot"_s, 5);
        const auto [x, y, text] = cells<3>();
        QCOMPARE(spots.textAt({x.toDouble(), y.toDouble()}), text);
        QCOMPARE(spots.count(), 6);
        for (const int unplaced : {-1, 1, 2, 5, 6, 99})
            QVERIFY(!spots.spot(unplaced));
        QCOMPARE(spots.bounds(), QRectF(10, 0, 300, 60));
    }

    void alerts_data()
    {
        drawnRows(uR"(
            others come             | 14 21:55:00 | 21:00 2 Team A; 22:00 2 Team B                                   | 2=Alert
            the same stay           | 14 21:55:00 | 21:00 2 Team A; 22:00 2 Team A                                   |
            other letters           | 14 21:55:00 | 21:00 2 Team A; 22:00 2 team a                                   | 2=Alert
            nobody comes            | 14 21:55:00 | 21:00 2 Team A                                                   | 2=Alert
            nobody plays            | 14 21:55:00 | 22:00 2 Team B                                                   |
            up to the highest field | 14 21:55:00 | 21:00 0 A; 22:00 0 B; 21:00 8 A; 22:00 7 A; 21:00 9 A; 20:00 4 A | 0=Alert 8=Alert
            into midnight           | 14 23:55:00 | 23:00 1 A; 24:00 1 A; 23:00 2 A; 24:00 2 B                       | 2=Alert
            out of midnight         | 15 00:55:00 | 24:00 1 A; 01:00 1 A; 24:00 2 A; 01:00 2 B                       | 2=Alert
            end hour, same day      | 15 01:55:00 | 01:00 1 A; 02:00 1 A; 01:00 2 A                                  | 2=Alert
            the last hour ends      | 15 02:55:00 | 02:00 1 A                                                        | 1=Alert
            the day begins          | 14 07:55:00 | 08:00 1 A                                                        |
            only this day           | 14 21:55:00 | -21:00 2 A; -22:00 3 A                                           |
        )"_s);
    }

    void alerts()
    {
        const auto [now, bookings, alerts] = cells<3>();
        for (const QString &line : listOf(bookings))
            m_server.exec(insertOf(line));
        TestStation station(m_server);
        station.setNow(u"2026-11-"_s + now);
        std::vector<QString> captions(9, alertCaption); // of the hour before
        RefreshAlert(station, captions);
        QCOMPARE(setFields(captions), alerts);
        QCOMPARE(captions.size(), std::size_t(9));
    }

    void alertStatements()
    {
        TestStation station(m_server);
        station.settings.MaxFieldIndex = 1;
        station.setNow(u"2026-12-31 23:55:00"_s);
        std::vector<QString> captions;
        m_server.startLog();
        RefreshAlert(station, captions);
        QStringList wanted;
        for (const QString &slot : {u"24:00:00\" AND b_field=0"_s, u"23:00:00\" AND b_field=0"_s,
                                    u"24:00:00\" AND b_field=1"_s, u"23:00:00\" AND b_field=1"_s})
            wanted += u"SELECT * from tbl_booking where b_datetime=\"2026-12-31 "_s + slot;
        QCOMPARE(m_server.takeLog(), wanted);
        // An error leaves the captions as they are.
        captions = {u""_s, alertCaption};
        m_server.exec(u"DROP TABLE tbl_booking"_s);
        QVERIFY_THROWS_EXCEPTION(DbError, RefreshAlert(station, captions));
        QCOMPARE(setFields(captions), u"1=Alert"_s);
    }

    void alertClock()
    {
        AlertClock twoHours;
        QCOMPARE(ticks(twoHours, QTime(21, 30), 2 * 3600),
                 u"21:55:00 refresh, 22:02:00 clear, 22:55:00 refresh, 23:02:00 clear"_s);
        AlertClock startedInMinute55;
        QCOMPARE(ticks(startedInMinute55, QTime(23, 55, 40), 600), u"23:55:40 refresh, 00:02:00 clear"_s);
        AlertClock startedInMinute2;
        QCOMPARE(ticks(startedInMinute2, QTime(8, 2, 59), 60), u"08:02:59 clear"_s);
        // A machine that slept from the one minute to the other has not seen the flag cleared.
        QCOMPARE(ticks(startedInMinute2, QTime(8, 55), 60), u"08:55:00 refresh"_s);
        QCOMPARE(ticks(startedInMinute2, QTime(9, 2), 60), QString());
        QCOMPARE(ticks(startedInMinute2, QTime(9, 3), 53 * 60), u"09:55:00 refresh"_s);
        // A round that failed is due again each second of its minute, until one succeeds.
        AlertClock failing;
        for (const int second : {0, 1, 2}) {
            QCOMPARE(ticks(failing, QTime(9, 55, second), 1), u"09:55:0"_s + QString::number(second) + u" refresh"_s);
            failing.failed();
        }
        QVERIFY(failing.tick(QTime(9, 55, 3)).refresh);
        QCOMPARE(ticks(failing, QTime(9, 55, 4), 50), QString());
        failing.failed();
        QCOMPARE(ticks(failing, QTime(9, 56, 0), 59 * 60 - 1), u"10:02:00 clear"_s);
    }

    void commit_data()
    {
        drawnRows(uR"(
            nobody confirms           | verify -> nobody                                                         | 11111 |
            not meant                 | verify -> anna staff; confirm: Confirm Light Status? [Important] -> no   | 11111 |
            staff, all off            | verify Commit the lights of Field 4 -> anna staff; confirm: Confirm Light Status? [Important] -> yes  | 00000 | l_staff='anna', l_datetime='2026-11-14 14:59:59', l_row0='off', l_row1='off',l_row2='off', l_row3='off', l_row4= 'off'
            administrator, row by row | verify -> o'hara admin; confirm: Confirm Light Status? [Important] -> yes | 10110 | l_staff='o\'hara', l_datetime='2026-11-14 14:59:59', l_row0='on', l_row1='off',l_row2='on', l_row3='on', l_row4= 'off'
        )"_s);
    }

    void commit()
    {
        const auto [script, rows, sent] = cells<3>();
        TestStation station(m_server, listOf(script));
        LightRows switches;
        for (std::size_t row = 0; row < switches.size(); ++row)
            switches.at(row) = rows[qsizetype(row)] == u'1';
        m_server.startLog();
        QCOMPARE(commitLights(station, 3, switches), !sent.isEmpty());
        const QString insert = sent.isEmpty() ? QString() : u"INSERT INTO tbl_light SET l_field=3, "_s + sent;
        QCOMPARE(m_server.takeLog().join(u'\n'), insert);
        const auto commits = lastLightCommits(station.database, 3, 5);
        QCOMPARE(commits.size(), sent.isEmpty() ? 0U : 1U);
        if (!commits.empty()) {
            QVERIFY(commits.front().rows == switches);
            QCOMPARE(commits.front().when, u"2026-11-14 14:59:59"_s);
            QVERIFY(script.contains(commits.front().staff));
        }
    }

    void status()
    {
        for (const auto *const line :
             {"14:00 0 Partially Shared", "14:00 1 Team A", "14:00 2 Shared Booking", "14:00 4 Partially Shared",
              "14:00 4 Team B", "14:00 7 Abel", "14:00 7 Partially Shared", "14:00 8 Zoe", "14:00 8 Shared Booking",
              "13:00 5 Team C", "15:00 5 Team C", "24:00 6 Night owls", "14:00 9 Elsewhere"})
            m_server.exec(insertOf(QString::fromLatin1(line)));
        const QString light = u"INSERT INTO tbl_light (l_field, l_datetime, l_row0, l_row3) VALUES "_s;
        m_server.exec(light + u"(0,'2026-11-14 12:00:00','on','on'),(0,'2026-11-13 12:00:00','off','off'),"_s +
                      u"(1,'2026-11-14 12:00:00','on','on'),(1,'2026-11-14 12:00:00','off','off'),"_s +
                      u"(2,'2026-11-14 12:00:00','off','on'),(9,'2026-11-14 12:00:00','on','on')"_s);
        TestStation station(m_server);
        const auto words = [&station](const QString &now) {
            station.setNow(now);
            QStringList fields;
            for (const FieldStatus &field : readPlanStatus(station.database, station.now(), station.hours(), 8))
                fields += QStringList{field.stateText(), field.booker, field.lightText()}.join(u'|');
            return fields;
        };
        QCOMPARE(words(u"2026-11-14 14:59:59"_s),
                 (QStringList{u"Shared|Partially Shared|Lights 2/5"_s, u"Booked|Team A|Lights off"_s,
                              u"Shared|Shared Booking|Lights 1/5"_s, u"Free||"_s, u"Booked|Team B|"_s, u"Free||"_s,
                              u"Free||"_s, u"Booked|Abel|"_s, u"Booked|Zoe|"_s}));
        QCOMPARE(words(u"2026-11-15 00:00:00"_s).at(6), u"Booked|Night owls|"_s);
        for (const QString &line : {u"07:59:59 Closed"_s, u"08:00:00 Free"_s, u"02:59:59 Free"_s, u"03:00:00 Closed"_s})
            QCOMPARE(words(u"2026-11-14 "_s + line.left(8)).at(3), line.mid(9) + u"||"_s);
        QCOMPARE(readPlanStatus(station.database, station.now(), station.hours(), -1).size(), 0U);
        QCOMPARE(lastLightCommits(station.database, 0, 5).front().when, u"2026-11-14 12:00:00"_s);
        QCOMPARE(lastLightCommits(station.database, 1, 1).size(), 1U);
    }

private:
    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Plan)
#include "tst_Plan.moc"
