#include "app/Conversions.h"
#include "app/Formats.h"
#include "app/SqlText.h"
#include "counter/CounterNumbers.h"
#include "counter/PayingHours.h"
#include "counter/Settlement.h"
#include "counter/Till.h"
#include "support/CuttingProxy.h"
#include "support/DrawnRows.h"
#include "support/MessageOf.h"
#include "support/TestStation.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <barrier>

using namespace Qt::StringLiterals;

namespace {

BookedHour hourOf(const QString &hour, int field, const QString &booker, const QString &rateType = {}, int extra = 0)
{
    return {{u"2026-11-14"_s, hour, field}, booker, rateType, extra};
}

SlotPrice priceWith(double price, int extra)
{
    const double quantity = 1 + extra / 60.0;
    return {{}, extra, price, quantity, price * quantity};
}

} // namespace

/// The payment list and the sale: what is added up, written, refused and kept.
class tst_Settlement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8()); }
    void init() { m_server.freshDatabase(); }

    void totals_data()
    {
        // Unit price and quantity of each line, "+30" an hour with extra minutes; the total; what the last step throws.
        drawnRows(uR"(
            extra time      | 40.00 +30                        | 60.00    |
            half a cent     | 39.95 +30                        | 59.93    |
            quarters        | 39.95 +15; 39.95 +45             | 119.85   |
            tenths          | 0.1 1; 0.2 1                     | 0.30     |
            cents that drift | 1.005 1; 2.675 1                | 3.69     |
            no quantity     | 2.50 2; 2.50 0; 2.50             | 5.00     |
            most            | 1 32767                          | 32767.00 |
            too many        | 2.50 1; 1 32768                  | 2.50     | Overflow
            no number       | 2.50 1; 1 zwei                   | 2.50     | Type mismatch
            no price        | 2.50 1; abc 1                    | 2.50     | Type mismatch
            beyond money    | 2.50 1; 9999999999 2             | 2.50     | Overflow
        )"_s);
    }

    void totals()
    {
        const auto [lines, total, thrown] = cells<3>();
        PaymentList list;
        QString message;
        for (const QString &line : listOf(lines)) {
            const QString price = line.section(u' ', 0, 0);
            const QString quantity = line.section(u' ', 1);
            message = messageOf([&] {
                if (const int extra = quantity.toInt(); quantity.startsWith(u'+'))
                    list.addHour(hourOf(u"18:00"_s, 6, u"Smith"_s, {}, extra), priceWith(price.toDouble(), extra));
                else
                    list.addItem(u"Cola"_s, price, quantity);
            });
        }
        QCOMPARE(list.total(), total);
        QCOMPARE(message, thrown);
        while (!list.isEmpty())
            list.remove(0);
        QCOMPARE(list.total(), u"0.00"_s);
    }

    void thousandLines()
    {
        PaymentList list;
        for (int i = 0; i < 1000; ++i)
            list.addItem(u"Cola"_s, u"0.1"_s, u"1"_s);
        QCOMPARE(list.total(), u"100.00"_s);
        list.addMisc(u"Misc"_s, u"7.5"_s);
        list.addMisc(u"Misc"_s, {});
        QCOMPARE(list.lines().size(), 1001U);
        QCOMPARE(list.total(), u"107.50"_s);
    }

    void payingHours_data()
    {
        // The selected rows; what is asked; what the list holds afterwards.
        drawnRows(uR"(
            three, one paid | >15:00 Smith; >16:00 Jones paid 5.00; >17:00 Kim | refuse: The slot already paid | 15:00 40.00 1 40.00
            empty           | >15:00                          | refuse: You cannot pay empty slot |
            continuation    | 15:00 Smith; >16:00 +30         | refuse: The slot is an extra time of previous slot, use the previous slot to pay for it |
            part            | >15:00 Partially Shared         | refuse: The slot is booked by one or more individual slots |
            shared          | >15:00 Shared Booking           | refuse: Please pay via master slots |
            member, longer  | >18:00 Meg                      | inform: The customer got member rate [Information]; inform: The customer got extra time [Information] | 18:00 30.00 1.5 45.00
            twice           | >15:00 Smith; >16:00 Jones      | plain: Already in the payment list | 15:00 40.00 1 40.00
        )"_s);
    }

    void payingHours()
    {
        const auto [grid, asked, lines] = cells<3>();
        rates();
        book(hourOf(u"15:00"_s, 6, u"Smith"_s));
        book(hourOf(u"18:00"_s, 6, u"Meg"_s, u"member"_s, 30));
        TestStation station(m_server, listOf(asked));
        PaymentList list;
        const auto add = [&](const BookedHour &hour, const SlotPrice &price) { list.addHour(hour, price); };
        const DaySelection rows = drawnDay(u"2026-11-14"_s, 6, listOf(grid));
        if (QByteArray(QTest::currentDataTag()) == "twice")
            payHours(station, drawnDay(u"2026-11-14"_s, 6, {u">15:00 Smith"_s}), list, add);
        payHours(station, rows, list, add);
        QStringList shown;
        for (const PaymentLine &line : list.lines()) {
            QCOMPARE(line.text, u"Field Number 7 14/11/2026 "_s + line.hour->slot.hourText);
            shown << QStringList{line.hour->slot.hourText, line.price, line.quantity, line.total}.join(u' ');
        }
        QCOMPARE(shown.join(u"; "_s), lines);
    }

    void statements()
    {
        m_server.exec(u"INSERT INTO tbl_member SET m_name='O\\'Neil'; INSERT INTO tbl_counter1 SET c_transaction=9;"
                      "INSERT INTO tbl_counter1 SET c_transaction=10, c_receipt=3"_s);
        const BookedHour hour = hourOf(u"24:00"_s, 10, u"O'Neil"_s, u"member"_s, 30);
        book(hour);
        TestStation station(m_server);
        station.CurrentStaff = u"anna"_s;
        PaymentList list;
        list.addHour(hour, priceWith(39.95, 30));
        list.addItem(u"Field Number plate"_s, u"2.5"_s, u"2"_s);
        m_server.startLog();
        const Settlement settlement = settle(station, list);
        QCOMPARE(int(settlement.transaction.value()), 11);
        const QString insert = u"INSERT INTO tbl_counter1 SET c_datetime='2026-11-14 14:59:59', c_item='%1', "
                               "c_itemprice='%2', c_itemquantity='%3', c_itemtotal='%4', c_transaction='11', "
                               "c_special='%5', c_receipt='', c_staffid='anna'"_s;
        const QString slot = u" WHERE b_datetime='2026-11-14 24:00:00' AND b_field=10"_s;
        const QString text = u"Field Number 11 14/11/2026 24:00"_s;
        QStringList log = m_server.takeLog();
        log.removeIf([](const QString &line) { return line.endsWith(u" FOR UPDATE"_s); });
        const QStringList wanted{
            u"SELECT MAX(c_transaction) FROM tbl_counter1"_s,
            u"SELECT * from  tbl_booking"_s + slot,
            u"UPDATE tbl_booking SET b_paid=59.925"_s + slot,
            u"UPDATE tbl_member SET m_hour=m_hour+1 WHERE m_name='O\\'Neil'"_s,
            insert.arg(text, u"39.95"_s, u"1.5"_s, u"59.925"_s, u"member"_s),
            u"UPDATE tbl_item SET i_currentstock=i_currentstock-1.5 WHERE i_name LIKE '"_s + text + u'\'',
            insert.arg(u"Field Number plate"_s, u"2.50"_s, u"2"_s, u"5"_s, QString()),
            u"UPDATE tbl_item SET i_currentstock=i_currentstock-2 WHERE i_name LIKE 'Field Number plate'"_s,
            u"INSERT INTO tbl_log SET log_counter= 1, log_staffname='anna', log_datetime='2026-11-14 14:59:59', "
            "log_do='Sales made, drawer open'"_s};
        QCOMPARE(log, wanted);
        QCOMPARE(m_server.rows(u"SELECT m_hour FROM tbl_member"_s), QStringList{u"1"_s});
        QCOMPARE(m_server.rows(u"SELECT b_paid FROM tbl_booking"_s), QStringList{u"59.93"_s});
    }

    // Sale after sale of what comes, against sums kept beside.
    void randomBaskets()
    {
        const QStringList items{u"Cola"_s, u"Bob's bar"_s, u"50% juice"_s,         u"500 juice"_s,
                                u"a_b"_s,  u"axb"_s,       u"Field Number plate"_s};
        const QStringList rateTypes{
            {}, u"member"_s, u"student"_s, u"specialgroup2"_s, u"specialgroup4"_s}; // 4 has no table
        for (const QString &item : items)
            m_server.exec(u"INSERT INTO tbl_item SET i_name='"_s + QString(item).replace(u'\'', u"''"_s) + u'\'');
        m_server.exec(u"INSERT INTO tbl_member SET m_name='D\\'Arcy'; INSERT INTO tbl_student SET st_name='D\\'Arcy';"
                      "INSERT INTO tbl_specialgroup2 SET m_name='D\\'Arcy'"_s);
        QMap<QString, int> stock;
        QMap<QString, int> hours;
        qint64 cents = 0;
        qsizetype lineCount = 0;
        QRandomGenerator random(7);
        TestStation station(m_server);
        for (int sale = 1; sale <= 60; ++sale) {
            PaymentList list;
            for (int line = random.bounded(1, 7); line > 0; --line) {
                if (random.bounded(3) == 0) {
                    const QString rate = rateTypes[random.bounded(5)];
                    const int extra = random.bounded(4) * 15;
                    const BookedHour hour =
                        hourOf(formatTwoDigits(line + 8) + u":00"_s, sale, u"D'Arcy"_s, rate, extra);
                    book(hour);
                    list.addHour(hour, priceWith(random.bounded(1, 9000) / 100.0, extra));
                    ++hours[rate];
                } else {
                    const QString item = items[random.bounded(items.size())];
                    const int quantity = random.bounded(1, 30);
                    list.addItem(item, QString::number(random.bounded(1, 3000) / 100.0), QString::number(quantity));
                    stock[item] -= quantity;
                }
            }
            lineCount += qsizetype(list.lines().size());
            cents += std::llround(list.total().toDouble() * 100);
            QCOMPARE(int(settle(station, list).transaction.value()), sale);
        }
        const auto one = [this](const QString &query) { return m_server.rows(query).value(0); };
        QCOMPARE(one(u"SELECT COUNT(*), SUM(c_itemtotal) FROM tbl_counter1"_s),
                 sql(u"%1|%2"_s, qint64(lineCount), formatNumber(double(cents) / 100, u"0.00"_s)));
        for (const QString &item : items)
            QCOMPARE(one(u"SELECT i_currentstock FROM tbl_item WHERE i_name='"_s +
                         QString(item).replace(u'\'', u"''"_s) + u'\''),
                     QString::number(stock[item]));
        QCOMPARE(one(u"SELECT m_hour FROM tbl_member"_s), QString::number(hours[u"member"_s]));
        QCOMPARE(one(u"SELECT st_hour FROM tbl_student"_s), QString::number(hours[u"student"_s]));
        QCOMPARE(one(u"SELECT m_hour FROM tbl_specialgroup2"_s), QString::number(hours[u"specialgroup2"_s]));
        QCOMPARE(m_server.rows(u"SELECT b_id FROM tbl_booking WHERE b_paid=0"_s), QStringList());
        QCOMPARE(one(u"SELECT SUM(b_paid) FROM tbl_booking"_s),
                 one(u"SELECT SUM(c_itemtotal) FROM tbl_counter1 WHERE c_item LIKE 'Field Number %/%'"_s));
    }

    void refusals_data()
    {
        // What happened to Smith's hour since it was added.
        drawnRows(uR"(
            paid     | b_paid=1                 | Field 7 18:00 was paid at another counter
            rebooked | b_bookername='Jones'     | Field 7 18:00 is booked for Jones by now
            rate     | b_specialrate='student'  | Field 7 18:00 has the student rate by now
            extra    | b_extratime=45           | Field 7 18:00 has other extra time by now: 45 minutes
            gone     | b_field=7                | Field 7 18:00 is no longer booked
            next day | b_datetime=REPLACE(b_datetime, '14 18', '15 18'), b_paid=1 | Field 7 18:00 was paid at another counter (2026-11-15)
        )"_s);
    }

    void refusals()
    {
        const auto [change, why] = cells<2>();
        BookedHour hour = hourOf(u"18:00"_s, 6, u"Smith"_s);
        book(hour);
        if (change.contains(u"REPLACE"_s))
            hour.slot.day = u"2026-11-15"_s;
        TestStation station(m_server);
        PaymentList list;
        list.addItem(u"Cola"_s, u"2"_s, u"1"_s);
        list.addHour(hour, priceWith(40, 0));
        m_server.exec(u"UPDATE tbl_booking SET "_s + change);
        const QStringList before = m_server.rows(u"SELECT * FROM tbl_booking"_s);
        const Settlement settlement = settle(station, list);
        QVERIFY(!settlement.transaction);
        QCOMPARE(settlement.refused.size(), 1U);
        QCOMPARE(settlement.refused[0].line, 1U);
        QCOMPARE(settlement.refused[0].why, why);
        QCOMPARE(m_server.rows(u"SELECT * FROM tbl_booking"_s), before);
        QCOMPARE(m_server.rows(u"SELECT 1 FROM tbl_counter1 UNION ALL SELECT 1 FROM tbl_log"_s), QStringList());
    }

    void numbers()
    {
        PaymentList list;
        list.addItem(u"Cola"_s, u"2"_s, u"1"_s);
        m_server.exec(u"INSERT INTO tbl_counter1 SET c_transaction=32766"_s);
        TestStation station(m_server, {u"inform"_s});
        QCOMPARE(int(settle(station, list).transaction.value()), 32767);
        QCOMPARE(messageOf([&] { settle(station, list); }), u"Overflow"_s);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_counter1"_s), QStringList{u"2"_s});
        QCOMPARE(messageOf([&] { settle(station, {}); }), u"There is nothing to pay."_s);
    }

    // Two copies of the program at one counter: the first one is held before it writes.
    void oneNumberEach()
    {
        CuttingProxy proxy(m_server);
        proxy.holdAt(u"INSERT INTO tbl_counter1"_s);
        PaymentList list;
        list.addItem(u"Cola"_s, u"2"_s, u"1"_s);
        std::array<int, 2> numbers{};
        const auto sale = [&](std::size_t who, const QString &connection) {
            ScriptedPrompts person;
            Station station(testSettings(connection), person);
            numbers[who] = settle(station, list).transaction.value_or(0);
        };
        const std::unique_ptr<QThread> first(QThread::create(sale, 0, proxy.connectionString()));
        first->start();
        QVERIFY(proxy.waitUntilHeld());
        TestStation unguarded(m_server); // without the lock both would get the same
        DbConnection connection(unguarded.database);
        QCOMPARE(highestTransactionNumber(connection, 1), 0);
        const std::unique_ptr<QThread> second(QThread::create(sale, 1, m_server.connectionString()));
        second->start();
        QTRY_VERIFY(
            !m_server.rows(u"SELECT 1 FROM information_schema.processlist WHERE state='User lock'"_s).isEmpty());
        proxy.letGo();
        first->wait();
        second->wait();
        QCOMPARE(numbers, (std::array{1, 2}));
    }

    // TAMSORA_SALES=500 for a long run.
    void sameHourAtTwoCounters()
    {
        m_server.exec(u"CREATE TABLE tbl_counter2 LIKE tbl_counter1"_s);
        const BookedHour hour = hourOf(u"18:00"_s, 6, u"Smith"_s);
        book(hour);
        PaymentList list;
        list.addHour(hour, priceWith(40, 0));
        const int rounds =
            qEnvironmentVariableIsSet("TAMSORA_SALES") ? qEnvironmentVariableIntValue("TAMSORA_SALES") : 20;
        std::barrier together(2);
        std::atomic<int> sold = 0;
        const auto counter = [&](int number) {
            ScriptedPrompts person;
            Station station(testSettings(m_server.connectionString(), number), person);
            for (int i = 0; i < rounds; ++i) {
                together.arrive_and_wait();
                sold += settle(station, list).transaction.has_value() ? 1 : 0;
                together.arrive_and_wait();
                if (number == 1)
                    DbConnection(station.database).execute(u"UPDATE tbl_booking SET b_paid=0"_s);
            }
        };
        const std::unique_ptr<QThread> other(QThread::create(counter, 2));
        other->start();
        counter(1);
        other->wait();
        QCOMPARE(sold.load(), rounds);
        QCOMPARE(m_server.rows(u"SELECT (SELECT COUNT(*) FROM tbl_counter1) + (SELECT COUNT(*) FROM tbl_counter2)"_s),
                 QStringList{QString::number(rounds)});
    }

    // A list whose settlement nobody heard the end of is recognised among the counter's sales.
    void recognised()
    {
        TestStation station(m_server);
        const QDateTime since = station.now();
        PaymentList list;
        list.addItem(u"Cola"_s, u"2.50"_s, u"2"_s);
        list.addMisc(u"Misc"_s, u"7.1"_s);
        QVERIFY(!recordedSale(station, list, 0, since));
        settle(station, list);
        QCOMPARE(int(recordedSale(station, list, 0, since).value()), 1);
        QVERIFY(!recordedSale(station, list, 1, since));
        QVERIFY(!recordedSale(station, list, 0, since.addSecs(1)));
        list.addItem(u"Cola"_s, u"2.50"_s, u"1"_s);
        QVERIFY(!recordedSale(station, list, 0, since));
    }

    void keptInAFile()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"till.json"_s);
        QDateTime now(QDate(2026, 11, 14), QTime(14, 32));
        const auto clock = [&] { return now; };
        PaymentList sold;
        {
            Till till(clock);
            QVERIFY(till.open(file));
            till.setLastSale(41);
            till.change(
                [](PaymentList &list) { list.addHour(hourOf(u"18:00"_s, 10, u"O'Neil"_s, u"member"_s, 30), {}); });
            now = now.addSecs(60);
            till.change([](PaymentList &list) { list.addItem(u"Cola"_s, u"2.50"_s, u"2"_s); });
            QVERIFY(!messageOf([&] {
                         till.change([](PaymentList &list) {
                             list.remove(0);
                             list.addItem(u"Cola"_s, u"x"_s, u"2"_s);
                         });
                     }).isEmpty());
            till.hold(u"Smith"_s);
            till.change([](PaymentList &list) { list.addMisc(u"Misc"_s, u"3"_s); });
            sold = till.list();
            QVERIFY(!Till(clock).open(file)); // one copy keeps it
        }
        Till till(clock);
        QVERIFY(till.open(file));
        QVERIFY(till.isInDoubt());
        QCOMPARE(till.list(), sold);
        QCOMPARE(till.begun(), now);
        QCOMPARE(till.saleBefore(), 41);
        till.clear();
        QVERIFY(QFile::exists(file)); // there is still a held one
        QCOMPARE(till.held().at(0).name, u"Smith"_s);
        till.recall(0);
        QCOMPARE(till.list().total(), u"5.00"_s);
        QCOMPARE(till.list().lines().at(0).hour, hourOf(u"18:00"_s, 10, u"O'Neil"_s, u"member"_s, 30));
        QCOMPARE(till.begun().time(), QTime(14, 33));
        till.clear();
        QVERIFY(!QFile::exists(file));
    }

    void fileThatCannotBeRead()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"till.json"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("{\"list\": {\"lines\": [") > 0);
        file.close();
        Till till(&QDateTime::currentDateTime);
        QVERIFY(till.open(file.fileName()));
        QVERIFY(till.list().isEmpty());
        QVERIFY(QFile::exists(till.damagedFile()));
        till.change([](PaymentList &list) { list.addMisc(u"Misc"_s, u"3"_s); });
        QVERIFY(till.isKept());
        QVERIFY(QDir(folder.path()).removeRecursively());
        till.change([](PaymentList &list) { list.addMisc(u"Misc"_s, u"3"_s); });
        QVERIFY(!till.isKept());
        QCOMPARE(till.list().total(), u"6.00"_s);
    }

private:
    void rates() const
    {
        for (const auto &[rate, price] : {std::pair{""_L1, 40}, std::pair{"member"_L1, 30}})
            m_server.exec(sql(u"INSERT INTO tbl_rate SET r_day='Saturday', r_field=6, r_special='%1', r_timestart=8, "
                              "r_timestop=23, r_rate=%2"_s,
                              QString(rate), price));
    }

    void book(const BookedHour &hour) const
    {
        m_server.exec(sql(u"INSERT INTO tbl_booking SET b_datetime='%1', b_field=%2, b_bookername='%3', "
                          "b_specialrate='%4', b_extratime=%5"_s,
                          hour.slot.dateTimeText(), hour.slot.field, quoted(hour.booker), hour.rateType,
                          hour.extraMinutes));
    }

    PrivateServer m_server;
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_Settlement)
#include "tst_Settlement.moc"
