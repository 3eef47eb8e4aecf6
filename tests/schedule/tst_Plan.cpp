#include "app/Errors.h"
#include "schedule/Alerts.h"
#include "schedule/HotSpots.h"
#include "schedule/Lights.h"
#include "schedule/PlanStatus.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QTest>

#include <memory>

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
    for (std::size_t field = 0; field < captions.size(); ++field) {
        if (!captions[field].isEmpty())
            fields += QString::number(field) + u'=' + captions[field];
    }
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
    void initTestCase() { m_server = std::make_unique<PrivateServer>(); }
    void init() { m_server->freshDatabase(); }

    void hotSpots_data();
    void hotSpots();
    void clickOnText();
    void alerts_data();
    void alerts();
    void alertStatements();
    void alertsWithoutServer();
    void alertClock();
    void commit_data();
    void commit();
    void status();

private:
    std::unique_ptr<PrivateServer> m_server;
};

void tst_Plan::hotSpots_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QString>("text");
    QTest::newRow("inside") << QPointF(50, 30) << u"0"_s;
    QTest::newRow("upper left corner") << QPointF(10, 10) << u"0"_s;
    QTest::newRow("lower right corner") << QPointF(100.1, 50.7) << u"0"_s;
    QTest::newRow("just outside") << QPointF(49.6, 50.8) << u"X=50"_s;
    QTest::newRow("overlap of 0 and 3") << QPointF(95, 45) << u"0"_s;
    QTest::newRow("only 3") << QPointF(120, 55) << u"3"_s;
    QTest::newRow("only 4, written without blanks and with fractions") << QPointF(300.5, 0.25) << u"4"_s;
    QTest::newRow("where 1 would be with its fourth number") << QPointF(205, 205) << u"X=205"_s;
    QTest::newRow("where 6 stands that is above the highest field") << QPointF(405, 405) << u"X=405"_s;
    QTest::newRow("left of the picture") << QPointF(-7, 30) << u"X=-7"_s;
}

void tst_Plan::hotSpots()
{
    WriteSetting(u"HotSpot"_s, u"Coord0"_s, u"10, 10, 100.1, 50.7"_s);
    WriteSetting(u"HotSpot"_s, u"Coord1"_s, u"200, 200, 300"_s);
    WriteSetting(u"HotSpot"_s, u"Coord3"_s, u"90, 40, 150, 60"_s);
    WriteSetting(u"HotSpot"_s, u"Coord4"_s, u"300.25,0,310,0.5"_s);
    WriteSetting(u"HotSpot"_s, u"Coord5"_s, u"a, b, c, d"_s);
    WriteSetting(u"HotSpot"_s, u"Coord6"_s, u"400, 400, 410, 410"_s);
    const HotSpots spots(u"HotSpot"_s, 5);
    QFETCH(const QPointF, point);
    QTEST(spots.textAt(point), "text");
    QCOMPARE(spots.count(), 6);
    for (const int unplaced : {-1, 1, 2, 5, 6, 99})
        QVERIFY(!spots.spot(unplaced));
    QCOMPARE(spots.bounds(), QRectF(10, 0, 300, 60));
}

void tst_Plan::clickOnText()
{
    const std::vector<std::pair<QString, int>> cases = {{u"0"_s, 0},    {u"8"_s, 8},   {u"9"_s, -1},
                                                        {u"X=3"_s, -1}, {u"-1"_s, -1}, {QString(), -1}};
    for (const auto &[text, field] : cases)
        QCOMPARE(clickedField(text, 8), field);
    QCOMPARE(clickedField(u"0"_s, -1), -1);
}

void tst_Plan::alerts_data()
{
    QTest::addColumn<QString>("now");
    QTest::addColumn<QStringList>("bookings");
    QTest::addColumn<QString>("alerts");
    const QString evening = u"2026-11-14 21:55:00"_s;
    QTest::newRow("others come") << evening << QStringList{u"21:00 2 Team A"_s, u"22:00 2 Team B"_s} << u"2=Alert"_s;
    QTest::newRow("the same stay") << evening << QStringList{u"21:00 2 Team A"_s, u"22:00 2 Team A"_s} << QString();
    QTest::newRow("other letters are others")
        << evening << QStringList{u"21:00 2 Team A"_s, u"22:00 2 team a"_s} << u"2=Alert"_s;
    QTest::newRow("nobody comes") << evening << QStringList{u"21:00 2 Team A"_s} << u"2=Alert"_s;
    QTest::newRow("nobody plays") << evening << QStringList{u"22:00 2 Team B"_s} << QString();
    QTest::newRow("field by field, the highest among them, none above")
        << evening
        << QStringList{u"21:00 0 A"_s, u"22:00 0 B"_s, u"21:00 8 A"_s, u"22:00 7 A"_s, u"21:00 9 A"_s, u"20:00 4 A"_s}
        << u"0=Alert 8=Alert"_s;
    QTest::newRow("into midnight") << u"2026-11-14 23:55:00"_s
                                   << QStringList{u"23:00 1 A"_s, u"24:00 1 A"_s, u"23:00 2 A"_s, u"24:00 2 B"_s}
                                   << u"2=Alert"_s;
    QTest::newRow("out of midnight") << u"2026-11-15 00:55:00"_s
                                     << QStringList{u"24:00 1 A"_s, u"01:00 1 A"_s, u"24:00 2 A"_s, u"01:00 2 B"_s}
                                     << u"2=Alert"_s;
    QTest::newRow("the end hour still belongs to the day before")
        << u"2026-11-15 01:55:00"_s << QStringList{u"01:00 1 A"_s, u"02:00 1 A"_s, u"01:00 2 A"_s} << u"2=Alert"_s;
    QTest::newRow("the last hour ends") << u"2026-11-15 02:55:00"_s << QStringList{u"02:00 1 A"_s} << u"1=Alert"_s;
    QTest::newRow("the day begins") << u"2026-11-14 07:55:00"_s << QStringList{u"08:00 1 A"_s} << QString();
    QTest::newRow("only this day") << evening << QStringList{u"-21:00 2 A"_s, u"-22:00 3 A"_s} << QString();
}

void tst_Plan::alerts()
{
    QFETCH(const QString, now);
    QFETCH(const QStringList, bookings);
    for (const QString &line : bookings)
        m_server->exec(insertOf(line));
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    station.setNow(now);
    std::vector<QString> captions(9, alertCaption); // of the hour before
    RefreshAlert(station, captions);
    QTEST(setFields(captions), "alerts");
    QCOMPARE(captions.size(), std::size_t(9));
}

void tst_Plan::alertStatements()
{
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    station.settings.MaxFieldIndex = 1;
    station.setNow(u"2026-12-31 23:55:00"_s);
    std::vector<QString> captions;
    m_server->startLog();
    RefreshAlert(station, captions);
    // The log leaves out the final semicolon.
    QCOMPARE(m_server->takeLog(),
             (QStringList{u"SELECT * from tbl_booking where b_datetime=\"2026-12-31 24:00:00\" AND b_field=0"_s,
                          u"SELECT * from tbl_booking where b_datetime=\"2026-12-31 23:00:00\" AND b_field=0"_s,
                          u"SELECT * from tbl_booking where b_datetime=\"2026-12-31 24:00:00\" AND b_field=1"_s,
                          u"SELECT * from tbl_booking where b_datetime=\"2026-12-31 23:00:00\" AND b_field=1"_s}));
}

void tst_Plan::alertsWithoutServer()
{
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    std::vector<QString> captions(9);
    captions[4] = alertCaption;
    m_server->exec(u"DROP TABLE tbl_booking"_s);
    QVERIFY_THROWS_EXCEPTION(DbError, RefreshAlert(station, captions));
    QCOMPARE(setFields(captions), u"4=Alert"_s);
}

void tst_Plan::alertClock()
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
}

void tst_Plan::commit_data()
{
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("sent");
    const QString verifyAs = u"verify -> "_s;
    const QString question = u"confirm: Confirm Light Status? [Important] -> "_s;
    QTest::newRow("nobody confirms") << QStringList{verifyAs + u"nobody"_s} << u"11111"_s << QString();
    QTest::newRow("not meant") << QStringList{verifyAs + u"anna staff"_s, question + u"no"_s} << u"11111"_s
                               << QString();
    QTest::newRow("staff, all off")
        << QStringList{verifyAs + u"anna staff"_s, question + u"yes"_s} << u"00000"_s
        << u"INSERT INTO tbl_light SET l_field=3, l_staff='anna', l_datetime='2026-11-14 14:59:59', l_row0='off', l_row1='off',l_row2='off', l_row3='off', l_row4= 'off'"_s;
    QTest::newRow("administrator, row by row")
        << QStringList{verifyAs + u"o'hara admin"_s, question + u"yes"_s} << u"10110"_s
        << u"INSERT INTO tbl_light SET l_field=3, l_staff='o\\'hara', l_datetime='2026-11-14 14:59:59', l_row0='on', l_row1='off',l_row2='on', l_row3='on', l_row4= 'off'"_s;
}

void tst_Plan::commit()
{
    QFETCH(const QStringList, script);
    QFETCH(const QString, rows);
    QFETCH(const QString, sent);
    ScriptedPrompts prompts(script);
    TestStation station(*m_server, prompts);
    LightRows switches;
    for (std::size_t row = 0; row < switches.size(); ++row)
        switches.at(row) = rows[qsizetype(row)] == u'1';
    m_server->startLog();
    QCOMPARE(commitLights(station, 3, switches), !sent.isEmpty());
    QCOMPARE(m_server->takeLog().join(u'\n'), sent);
    const auto commits = lastLightCommits(station.database, 3, 5);
    QCOMPARE(commits.size(), sent.isEmpty() ? 0U : 1U);
    if (!commits.empty()) {
        QVERIFY(commits.front().rows == switches);
        QCOMPARE(commits.front().when, u"2026-11-14 14:59:59"_s);
        QVERIFY(script.front().contains(commits.front().staff));
    }
}

void tst_Plan::status()
{
    for (const auto *const line :
         {"14:00 0 Partially Shared", "14:00 1 Team A", "14:00 2 Shared Booking", "14:00 4 Partially Shared",
          "14:00 4 Team B", "13:00 5 Team C", "15:00 5 Team C", "24:00 6 Night owls", "14:00 9 Elsewhere"})
        m_server->exec(insertOf(QString::fromLatin1(line)));
    const QString light = u"INSERT INTO tbl_light (l_field, l_datetime, l_row0, l_row3) VALUES "_s;
    m_server->exec(light + u"(0,'2026-11-14 12:00:00','on','on'),(0,'2026-11-13 12:00:00','off','off'),"_s +
                   u"(1,'2026-11-14 12:00:00','on','on'),(1,'2026-11-14 12:00:00','off','off'),"_s +
                   u"(2,'2026-11-14 12:00:00','off','on'),(9,'2026-11-14 12:00:00','on','on')"_s);
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
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
                          u"Free||"_s, u"Free||"_s, u"Free||"_s}));
    QCOMPARE(words(u"2026-11-15 00:00:00"_s).at(6), u"Booked|Night owls|"_s);
    for (const auto &[now, word] : std::vector<std::pair<QString, QString>>{{u"07:59:59"_s, u"Closed"_s},
                                                                            {u"08:00:00"_s, u"Free"_s},
                                                                            {u"02:59:59"_s, u"Free"_s},
                                                                            {u"03:00:00"_s, u"Closed"_s}})
        QCOMPARE(words(u"2026-11-14 "_s + now).at(3), word + u"||"_s);
    QCOMPARE(readPlanStatus(station.database, station.now(), station.hours(), -1).size(), 0U);
    QCOMPARE(lastLightCommits(station.database, 0, 5).front().when, u"2026-11-14 12:00:00"_s);
    QCOMPARE(lastLightCommits(station.database, 1, 1).size(), 1U);
}

QTEST_GUILESS_MAIN(tst_Plan)
#include "tst_Plan.moc"
