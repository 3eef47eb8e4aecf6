#include "booking/Booking.h"

#include "booking/Customers.h"
#include "booking/RemarkLog.h"
#include "support/DrawnRows.h"
#include "support/ScriptedPrompts.h"
#include "support/TestStation.h"

#include <QProcess>
#include <QTest>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString saturday = u"2026-11-14"_s;
constexpr int raceSlots = 2000;

BookingRequest request(const QString &date, const QString &hour, int field, const QString &name = u"Team A"_s)
{
    return {date, hour, u"555"_s, u"FC"_s, name, field};
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
    BookingClipboard clipboard;
    const QString name = u"Counter "_s + QString::number(counter);
    DbConnection{station.database};
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    int booked = 0;
    for (int n = 0; n < raceSlots; ++n) {
        const SlotKey slot = raceSlot(n);
        const auto outcome =
            doBooking(station, clipboard, u"anna"_s, request(slot.day, slot.hourText, slot.field, name));
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
    void initTestCase() { m_server = std::make_unique<PrivateServer>(); }
    void init();

    void statements_data();
    void statements();
    void clock_data();
    void clock();
    void textsComeBackWhole();
    void backslashAtTheEnd();
    void beforeTheBookerIsAsked_data();
    void beforeTheBookerIsAsked();
    void selectionGoesOnAfterARefusal();
    void databaseErrorEndsTheSelection();
    void history();
    void customers_data();
    void customers();
    void twoCounters_data();
    void twoCounters();

private:
    [[nodiscard]] QStringList bookings() const
    {
        return m_server->rows(u"SELECT b_datetime, b_field, b_bookername, b_shared FROM tbl_booking ORDER BY b_id"_s);
    }

    std::unique_ptr<PrivateServer> m_server;
};

void tst_Booking::init()
{
    m_server->freshDatabase();
}

void tst_Booking::statements_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("standing");
    QTest::addColumn<bool>("fromWaitingList");
    QTest::addColumn<QStringList>("sent");
    const auto own = [](int field) {
        const QString number = QString::number(field);
        return QStringList{
            u"SELECT * FROM tbl_booking WHERE b_datetime='2026-11-14 18:00:00' AND b_field="_s + number,
            u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_bookertel='5\\'5', b_bookerorg='\\'', "
            "b_bookername='O\\'Neil', b_field="_s +
                number + u", b_specialrate='member'"_s,
            u"INSERT INTO tbl_remark SET m_dotime='2026-11-14 14:59:59',  m_datetime='2026-11-14 18:00:00', "
            "m_remark=' O\\'Neil 5\\'5', m_job='book' ,m_field="_s +
                number + u", m_staff='anna', m_actiontime='14 Nov 02:59:59 PM'"_s};
    };
    const auto remark = [](const QString &text, const QString &field) {
        return u"INSERT INTO tbl_remark SET m_dotime='2026-11-14 14:59:59', m_datetime='2026-11-14 18:00:00', m_remark='"_s +
               text + u"', m_job='book' ,m_field="_s + field + u", m_staff='anna', m_actiontime='14 Nov 02:59:59 PM'"_s;
    };
    const auto partner = [](const QString &field) {
        return u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_bookertel='', b_bookerorg='', "
               "b_bookername='Shared Booking', b_field="_s +
               field + u", b_specialrate=''"_s;
    };
    const QString lookAtParent = u"SELECT * FROM tbl_booking where b_datetime='2026-11-14 18:00:00' AND b_field=3"_s;
    const QString newParent = u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_bookertel='', "
                              "b_bookerorg='', b_bookername= 'Partially Shared'  , b_shared= b_shared + 1, b_field=3, "
                              "b_specialrate=''"_s;
    const QString raisedParent =
        u"UPDATE tbl_booking SET b_shared= b_shared + 1 where b_datetime='2026-11-14 18:00:00' "
        "AND b_field=3"_s;
    const QString stands = u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 18:00:00', b_field=3, "_s;

    QStringList fromList = own(7);
    fromList.insert(2, u"DELETE FROM tbl_waitlist where w_id='12'"_s);
    QTest::newRow("alone") << 7 << QString() << false << own(7);
    QTest::newRow("from the waiting list") << 7 << QString() << true << fromList;
    QTest::newRow("partners") << 3 << QString() << false
                              << own(3) + QStringList{partner(u"4"_s), remark(u" shared booking"_s, u"4"_s),
                                                      partner(u"5"_s), remark(u" shared booking"_s, u"5"_s)};
    const QString parentRemark = remark(u" partially booked field 3"_s, u"3"_s);
    QTest::newRow("parent, first") << 5 << QString() << false
                                   << own(5) + QStringList{lookAtParent, newParent, parentRemark};
    QTest::newRow("parent, next") << 5 << stands + u"b_bookername='Partially Shared', b_shared=1"_s << false
                                  << own(5) + QStringList{lookAtParent, raisedParent, parentRemark};
    QTest::newRow("parent with a booker of its own") << 5 << stands + u"b_bookername='Team B'"_s << false
                                                     << own(5) + QStringList{lookAtParent, newParent, parentRemark};
}

void tst_Booking::statements()
{
    QFETCH(int, field);
    QFETCH(QString, standing);
    QFETCH(bool, fromWaitingList);
    if (!standing.isEmpty())
        m_server->exec(standing);
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    DbConnection{station.database};
    BookingClipboard clipboard;
    clipboard.fromWaitingList = fromWaitingList;
    clipboard.waitingListId = u"12"_s;
    const BookingRequest booking{saturday,    u"18:00"_s, u"5'5"_s,    u"'"_s,
                                 u"O'Neil"_s, field,      u"member"_s, fromWaitingList};
    m_server->startLog();
    QCOMPARE(doBooking(station, clipboard, u"anna"_s, booking), BookingOutcome::Booked);
    QTEST(m_server->takeLog(), "sent");
    QVERIFY(!clipboard.fromWaitingList);
    // Taken now: the look is all that happens.
    m_server->startLog();
    QCOMPARE(doBooking(station, clipboard, u"anna"_s, booking), BookingOutcome::AlreadyBooked);
    QCOMPARE(m_server->takeLog().size(), 1);
}

void tst_Booking::clock_data()
{
    drawnRows({"now", "day", "hour", "outcome"}, uR"(
        going on          | 2026-11-14 14:59:59 | 2026-11-14 | 14:00 | booked
        over              | 2026-11-14 15:00:00 | 2026-11-14 | 14:00 | past
        yesterday         | 2026-11-14 15:00:00 | 2026-11-13 | 23:00 | past
        month end         | 2026-11-30 23:59:59 | 2026-11-30 | 24:00 | booked
        after the month   | 2026-12-01 00:59:59 | 2026-11-30 | 24:00 | booked
        midnight over     | 2026-12-01 01:00:00 | 2026-11-30 | 24:00 | past
        after the year    | 2027-01-01 02:59:59 | 2026-12-31 | 02:00 | booked
        last hour over    | 2027-01-01 03:00:00 | 2026-12-31 | 02:00 | past
        leap day          | 2028-02-29 00:30:00 | 2028-02-28 | 24:00 | booked
        the night before  | 2026-11-14 00:30:00 | 2026-11-14 | 01:00 | booked
        no hour of a day  | 2026-11-14 14:59:59 | 2026-11-20 | 00:00 | past
        after closing     | 2026-11-14 14:59:59 | 2026-11-20 | 03:00 | past
        before opening    | 2026-11-14 14:59:59 | 2026-11-20 | 07:00 | past
    )"_s);
}

void tst_Booking::clock()
{
    QFETCH(QString, now);
    QFETCH(QString, day);
    QFETCH(QString, hour);
    QFETCH(QString, outcome);
    const bool booked = outcome == u"booked";
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    station.setNow(now);
    BookingClipboard clipboard;
    QCOMPARE(doBooking(station, clipboard, u"anna"_s, request(day, hour, 8)),
             booked ? BookingOutcome::Booked : BookingOutcome::PreviousEntry);
    const QString slot = day + u' ' + hour + u":00|8"_s;
    QCOMPARE(bookings(), booked ? QStringList{slot + u"|Team A|0"_s} : QStringList());
    QCOMPARE(m_server->rows(u"SELECT m_datetime, m_field, m_dotime FROM tbl_remark"_s),
             booked ? QStringList{slot + u'|' + now} : QStringList());
}

void tst_Booking::textsComeBackWhole()
{
    const QStringList names{u"''O'Neil' \"the\" `Rest`'"_s,           u"%1 %2 % %s %%1 _"_s,
                            u"⚽️ 👩‍👩‍👧 ½ €"_s,    u"فريق ١ \u200Fנבחרת"_s,
                            u"A; DROP TABLE tbl_booking; -- /* # "_s, QString(255, u'Ü')};
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    station.shared = SharedFields({});
    BookingClipboard clipboard;
    for (int field = 0; field < names.size(); ++field) {
        const QString &name = names[field];
        const QString tel = name.left(64);
        QCOMPARE(doBooking(station, clipboard, u"anna"_s, {saturday, u"18:00"_s, tel, name, name, field}),
                 BookingOutcome::Booked);
        QCOMPARE(m_server->rows(u"SELECT b_bookername, b_bookerorg, b_bookertel FROM tbl_booking WHERE b_field="_s +
                                QString::number(field)),
                 QStringList{name + u'|' + name + u'|' + tel});
        QCOMPARE(slotHistory(station.database, {saturday, u"18:00"_s, field}),
                 u"14 Nov 02:59:59 PM: anna book "_s + name + u' ' + tel + u"\r\n"_s);
    }
}

void tst_Booking::backslashAtTheEnd()
{
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    BookingClipboard clipboard;
    const std::vector<Booker> bookers{{u"Team\\"_s, u"FC"_s, u"555"_s, u""_s},
                                      {u"Team'\\"_s, u""_s, u""_s, u"member"_s},
                                      {u"Team"_s, u"FC\\"_s, u"555"_s, u""_s},
                                      {u"Team"_s, u"FC"_s, u"555\\"_s, u"member"_s}};
    for (const auto &[name, org, tel, rateType] : bookers)
        QVERIFY_EXCEPTION_THROWN(
            doBooking(station, clipboard, u"anna"_s, {saturday, u"18:00"_s, tel, org, name, 3, rateType}), DbError);
    QCOMPARE(m_server->rows(u"SELECT * FROM tbl_remark"_s) + bookings(), QStringList());
    QCOMPARE(doBooking(station, clipboard, u"anna"_s, request(saturday, u"18:00"_s, 8)), BookingOutcome::Booked);
}

void tst_Booking::beforeTheBookerIsAsked_data()
{
    drawnRows({"day", "script", "confirmedBy"}, uR"(
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

void tst_Booking::beforeTheBookerIsAsked()
{
    QFETCH(QString, day);
    QFETCH(QString, script);
    ScriptedPrompts prompts({script});
    TestStation station(*m_server, prompts);
    const auto verification = startBooking(station, drawnDay(saturday, 2, listOf(day)));
    QTEST(verification ? verification->staffName : u""_s, "confirmedBy");
}

void tst_Booking::selectionGoesOnAfterARefusal()
{
    // Between the look at the grid and the booking, another counter took 17:00 and the clock went on.
    m_server->exec(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 17:00:00', b_field=8, b_bookername='Team B'"_s);
    ScriptedPrompts prompts({u"refuse: You cannot book previous entry"_s, u"refuse: The field already being booked"_s});
    TestStation station(*m_server, prompts);
    station.setNow(u"2026-11-14 15:00:00"_s);
    BookingClipboard clipboard;
    bookSelection(station, clipboard, u"anna"_s,
                  drawnDay(saturday, 8, {u">14:00"_s, u">17:00"_s, u">24:00"_s, u">01:00"_s}),
                  {u"Team A"_s, u""_s, u""_s}, false);
    QCOMPARE(bookings(), QStringList({u"2026-11-14 17:00:00|8|Team B|0"_s, u"2026-11-14 24:00:00|8|Team A|0"_s,
                                      u"2026-11-14 01:00:00|8|Team A|0"_s}));
}

void tst_Booking::databaseErrorEndsTheSelection()
{
    m_server->exec(u"RENAME TABLE tbl_remark TO hidden"_s);
    ScriptedPrompts prompts;
    TestStation station(*m_server, prompts);
    BookingClipboard clipboard;
    std::vector<int> handled;
    QVERIFY_EXCEPTION_THROWN(bookSelection(station, clipboard, u"anna"_s,
                                           drawnDay(saturday, 3, {u">16:00"_s, u">17:00"_s}), {u"A"_s, u""_s, u""_s},
                                           false, &handled),
                             DbError);
    QVERIFY(handled.empty());
    QCOMPARE(bookings(), QStringList{u"2026-11-14 16:00:00|3|A|0"_s});
}

void tst_Booking::history()
{
    const auto remark = [this](const QString &job, const QString &staff, const QString &text, const QString &slot,
                               int field) {
        m_server->exec(u"INSERT INTO tbl_remark SET m_dotime='2026-11-%1 10:00:00', m_datetime='%2', m_remark='%3', "
                       "m_job='%4', m_field=%5, m_staff='%6', m_actiontime='t'"_s.arg(
                           // Later rows carry earlier times: the order is the rows' own.
                           QString::number(20 - m_server->rows(u"SELECT 1 FROM tbl_remark"_s).size()), slot, text, job,
                           QString::number(field), staff));
    };
    const QString slot = u"2026-11-14 24:00:00"_s;
    remark(u"book"_s, u"anna"_s, u" Team A 555"_s, slot, 2);
    remark(u"extra time"_s, u"ben"_s, u" for player adding 15 minutes more "_s, slot, 2);
    remark(u"book"_s, u""_s, u" nobody"_s, slot, 2);
    remark(u"change rate"_s, u"boss"_s, u" set member rate for Team A 24:00"_s, slot, 2);
    remark(u"delete extra time"_s, u"ben"_s, u" do not want extratime."_s, slot, 2);
    remark(u"cancel"_s, u"anna"_s, u"it\\'s raining"_s, slot, 2);
    remark(u"paint"_s, u"anna"_s, u"x"_s, slot, 2);
    remark(u"book"_s, u"anna"_s, u" other field"_s, slot, 1);
    remark(u"book"_s, u"anna"_s, u" other hour"_s, u"2026-11-14 23:00:00"_s, 2);
    Database database(m_server->connectionString());
    const QString remarks = u"t: anna book Team A 555\r\n"
                            "t: ben add extra time for player adding 15 minutes more \r\n"
                            "t: boss change rate set member rate for Team A 24:00\r\n"
                            "t: ben delete extra time \r\n"
                            "t: anna cancel because booker said 'it's raining'\r\n"_s;
    QCOMPARE(slotHistory(database, {saturday, u"24:00"_s, 2}), remarks);

    m_server->exec(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 24:00:00', b_field=2, b_bookername='A', "
                   "b_specialrate='specialgroup1', b_staffname='olga'"_s);
    m_server->startLog();
    QCOMPARE(slotHistory(database, {saturday, u"24:00"_s, 2}),
             remarks + u"old record : olga book\r\nSpecial Rate Package = specialgroup1"_s);
    QCOMPARE(m_server->takeLog(), QStringList({u"SELECT m_staff, m_job, m_remark, m_actiontime from tbl_remark where "
                                               "m_datetime=\"2026-11-14 24:00:00\" AND m_field=2 ORDER BY m_id ASC"_s,
                                               u"SELECT b_specialrate, b_staffname from tbl_booking where "
                                               "b_datetime=\"2026-11-14 24:00:00\" AND b_field=2"_s}));
    QCOMPARE(slotHistory(database, {saturday, u"09:00"_s, 2}), QString());
}

void tst_Booking::customers_data()
{
    drawnRows({"kind", "number", "found"}, uR"(
        member                              | member  | M000001     | Mia, SC, 11, member
        member, last of several             | member  | M000002     | Max, , , member
        too short                           | member  | M00001      | nobody
        unknown                             | member  | M000009     | nobody
        quoted                              | member  | ' OR ''='   | nobody
        student                             | student | S000001     | Sue, Uni, 22, student
        any group has the first one's rate  | group   | G'00001     | Gil, Fire, 33, specialgroup1
    )"_s);
}

void tst_Booking::customers()
{
    m_server->exec(u"INSERT INTO tbl_member SET m_idno='M000001', m_name='Mia', m_org='SC', m_tel='11';"
                   "INSERT INTO tbl_member SET m_idno='M00001', m_name='Short';"
                   "INSERT INTO tbl_member SET m_idno='M000002', m_name='Moe';"
                   "INSERT INTO tbl_member SET m_idno='M000002', m_name='Max';"
                   "INSERT INTO tbl_student SET st_idno='S000001', st_name='Sue', st_org='Uni', st_tel='22';"
                   "INSERT INTO tbl_specialgroup2 SET m_idno='G\\'00001', m_name='Gil', m_org='Fire', m_tel='33'"_s);
    QFETCH(QString, kind);
    QFETCH(QString, number);
    Database database(m_server->connectionString());
    const auto found = kind == u"member"    ? findMember(database, number)
                       : kind == u"student" ? findStudent(database, number)
                                            : findGroupMember(database, 2, number);
    const Booker booker = found.value_or(Booker{});
    const QString line = QStringList{booker.name, booker.organisation, booker.telephone, booker.rateType}.join(u", "_s);
    QTEST(found ? line : u"nobody"_s, "found");
}

void tst_Booking::twoCounters_data()
{
    QTest::addColumn<bool>("guarded");
    QTest::newRow("never double") << true;
    QTest::newRow("double without the key") << false; // so that the row above is known to see
}

void tst_Booking::twoCounters()
{
    QFETCH(bool, guarded);
    if (!guarded)
        m_server->exec(u"ALTER TABLE tbl_booking DROP KEY slot_of_one_booker, ADD KEY (b_datetime, b_field)"_s);
    QProcess counters[2];
    for (int i = 0; i < 2; ++i) {
        counters[i].setProcessChannelMode(QProcess::ForwardedErrorChannel);
        counters[i].start(QCoreApplication::applicationFilePath(),
                          {u"--race"_s, m_server->connectionString(), QString::number(i + 1)});
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
    QCOMPARE(m_server->rows(counts), QStringList{number + u'|' + QString::number(raceSlots) + u'|' + number});
    if (guarded)
        QCOMPARE(booked, raceSlots);
    else
        QVERIFY(booked > raceSlots);
}

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
