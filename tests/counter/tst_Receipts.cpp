#include "app/Conversions.h"
#include "app/Errors.h"
#include "counter/CounterNumbers.h"
#include "counter/Invoice.h"
#include "counter/Receipts.h"
#include "support/CuttingProxy.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString day = u"2026-11-14"_s;

/// A receipt as lines of text: title, number, amount, then its lines.
QStringList drawn(const std::optional<Receipt> &receipt)
{
    if (!receipt)
        return {u"none"_s};
    QStringList texts{receipt->title + u' ' + receipt->number + u' ' + receipt->amount};
    for (const ReceiptLine &line : receipt->lines)
        texts << QStringList{line.item, line.description, line.unitPrice, line.quantity, line.price}.join(u'|');
    return texts;
}

QString numberOf(const std::optional<Receipt> &receipt)
{
    return receipt ? receipt->number : u"none"_s;
}

} // namespace

/// The numbers of receipts and invoices, and what stands on them.
class tst_Receipts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("XDG_CONFIG_HOME", m_config.path().toUtf8()); }
    void init()
    {
        QFile::remove(settingsFilePath());
        m_server.freshDatabase();
        m_server.exec(u"CREATE TABLE tbl_counter2 LIKE tbl_counter1"_s);
    }

    void receiptIsNumberedOnce()
    {
        sell(1, u"Water"_s, u"1.20"_s, u"2"_s);
        sell(2, u"Field Number 7 14/11/2026 20:00"_s, u"39.95"_s, u"1.5"_s);
        sell(2, u"O\\'Brien\\'s 100% \"stout\""_s, u"12345.60"_s, u"1"_s);
        TestStation station(m_server);
        station.CurrentStaff = u"anna"_s;
        m_server.startLog();
        const auto receipt = receiptOfTransaction(station, 2);
        QStringList log = m_server.takeWholeLog();
        QVERIFY(log.takeFirst().startsWith(u"SELECT GET_LOCK('posdb counter 1 numbers'"_s));
        QVERIFY(log.takeAt(5).startsWith(u"SELECT RELEASE_LOCK("_s));
        QCOMPARE(log, (QStringList{u"START TRANSACTION"_s, u"SELECT * FROM tbl_counter1 where c_transaction=2"_s,
                                   u"SELECT MAX(c_receipt) FROM tbl_counter1"_s,
                                   u"UPDATE tbl_counter1 SET c_receipt=1 WHERE c_transaction=2"_s, u"COMMIT"_s,
                                   u"INSERT INTO tbl_log SET log_counter= 1, log_staffname='anna', "
                                   "log_datetime='2026-11-14 14:59:59', log_do='Receipt Printed 1'"_s,
                                   u"SELECT * FROM tbl_counter1 WHERE c_receipt='1'"_s,
                                   u"SELECT * FROM tbl_counter1 WHERE c_receipt ='1'"_s}));
        QCOMPARE(drawn(receipt), (QStringList{u"OFFICIAL RECEIPT NO A 0001 $ 12405.53"_s,
                                              u"1|Field Number 7 14/11/2026 20:00|39.95|1.5|59.93"_s,
                                              u"2|O'Brien's 100% \"stout\"|12345.60|1|12345.60"_s}));
        QCOMPARE(receipt->issued + receipt->time + receipt->date, u"Issued By: annaTime: 14:59:59Date: 14/11/2026"_s);

        QCOMPARE(drawn(receiptOfTransaction(station, 2)), drawn(receipt));
        QCOMPARE(numberOf(receiptOfTransaction(station, 1)), u"NO A 0002"_s);
        QCOMPARE(logged(), (QStringList{u"Receipt Printed 1"_s, u"Receipt Printed 2"_s}));
        TestStation second(m_server, {}, 2);
        m_server.exec(u"INSERT INTO tbl_counter2 SET c_transaction=1"_s);
        QCOMPARE(drawn(receiptOfTransaction(second, 1)),
                 (QStringList{u"OFFICIAL RECEIPT NO B 0001 $ 0.00"_s, u"1||0.00|0|0.00"_s}));
    }

    void headingComesFromTheSettings()
    {
        for (const auto &[section, key, text] : {std::tuple{u"Address"_s, u"address1"_s, u"Larkmere Sports Centre"_s},
                                                 {u"Address"_s, u"address2"_s, u"12 Heron Walk"_s},
                                                 {u"Address"_s, u"address4"_s, u"behind a gap"_s},
                                                 {u"Contact"_s, u"contact1"_s, u"01632 960900"_s}})
            QVERIFY(WriteSetting(section, key, text));
        TestStation station(m_server);
        station.settings.logoPicture = u"logo.png"_s;
        const Receipt receipt = receiptHead(station, u"INVOICE"_s, 12345);
        QCOMPARE(receipt.info, u"Larkmere Sports Centre\r\n12 Heron Walk\r\n"_s);
        QCOMPARE(receipt.info2, u"01632 960900\r\n"_s);
        QCOMPARE(receipt.title + receipt.number + receipt.logo, u"INVOICENO A 12345logo.png"_s);
    }

    void oldReceipts_data()
    {
        // The answer; what comes of it. Transactions 7 and 32767 were sold.
        drawnRows(uR"(
            cancelled   |        | nothing
            its number  | 7      | NO A 0001
            blanks      |  0 7 x | NO A 0001
            the last    | 32767  | NO A 0001
            unknown     | 8      | none
            no number   | seven  | none
            fraction    | 7.5    | none
            above all   | 1e300  | none
            trick       | 7 OR 1 | NO A 0001
        )"_s);
    }

    void oldReceipts()
    {
        const auto [answer, outcome] = cells<2>();
        sell(7, u"Water"_s, u"1.20"_s, u"1"_s);
        sell(32767, u"Water"_s, u"1.20"_s, u"1"_s);
        QStringList script{u"ask: Enter Transaction Number [Print Receipt] -> "_s + answer};
        if (outcome == u"none")
            script << u"plain: No transaction by that number"_s;
        TestStation station(m_server, script);
        const auto receipt = askForOldReceipt(station);
        QCOMPARE(numberOf(receipt), outcome == u"nothing" ? u"none"_s : outcome);
        QCOMPARE(logged().size(), receipt ? 1 : 0);
    }

    void numbersRunOut()
    {
        for (const int transaction : {1, 2, 3, 4, 5})
            sell(transaction, u"Water"_s, u"1"_s, u"1"_s);
        const auto highest = [&](int receipt) {
            m_server.exec(u"UPDATE tbl_counter1 SET c_receipt=%1 WHERE c_transaction=1"_s.arg(receipt));
        };
        TestStation station(m_server);
        highest(9);
        QCOMPARE(numberOf(receiptOfTransaction(station, 2)), u"NO A 0010"_s);
        highest(29'999);
        station.person.expect({u"inform"_s});
        QCOMPARE(numberOf(receiptOfTransaction(station, 3)), u"NO A 30000"_s);
        QCOMPARE(numberOf(receiptOfTransaction(station, 4)), u"NO A 30001"_s); // once a day
        station.setNow(u"2026-11-15 09:00:00"_s);
        station.person.expect({u"inform"_s});
        warnOfHighNumber(station, u"receipt"_s, 30'001);
        highest(32'767);
        const QStringList before = m_server.rows(u"SELECT * FROM tbl_counter1"_s);
        QVERIFY_THROWS_EXCEPTION(ConversionError, static_cast<void>(receiptOfTransaction(station, 5)));
        QCOMPARE(m_server.rows(u"SELECT * FROM tbl_counter1"_s), before);
        QCOMPARE(m_server.rows(u"SELECT IS_USED_LOCK('posdb counter 1 numbers')"_s), QStringList{u"NULL"_s});
    }

    void sumsAreRightToTheCent()
    {
        m_server.exec(u"INSERT INTO tbl_counter1 (c_transaction, c_item, c_itemprice, c_itemquantity, c_itemtotal) "
                      "SELECT 1, seq, 0.1, 1, 0.1 FROM seq_1_to_997 UNION ALL SELECT 1, 'hour', 39.95, 1.5, 59.925 "
                      "UNION ALL SELECT 1, 'big', 12345.67, 1, 12345.67"_s);
        TestStation station(m_server);
        const auto receipt = receiptOfTransaction(station, 1);
        QCOMPARE(receipt->lines.size(), 999U);
        QCOMPARE(receipt->amount, u"$ 12505.30"_s);
    }

    // Two copies of the program at one counter; without the guard, one of them calls the same table another counter's.
    void race_data()
    {
        drawnRows(uR"(
            two sales | 2 | NO A 0001; NO A 0002 | Receipt Printed 1; Receipt Printed 2
            one sale  | 1 | NO A 0001; NO A 0001 | Receipt Printed 1
        )"_s);
    }

    void race()
    {
        const auto [second, numbers, log] = cells<3>();
        for (const bool guarded : {true, false}) {
            m_server.exec(u"TRUNCATE TABLE tbl_counter1; TRUNCATE TABLE tbl_log; DROP TABLE IF EXISTS tbl_counter2; "
                          "CREATE OR REPLACE VIEW tbl_counter2 AS SELECT * FROM tbl_counter1"_s);
            sell(1, u"Water"_s, u"1"_s, u"1"_s);
            sell(2, u"Water"_s, u"1"_s, u"1"_s);
            CuttingProxy proxy(m_server);
            proxy.holdAt(u"UPDATE tbl_counter1"_s);
            const auto printed = [](const QString &connection, int counter, int transaction) {
                DeedCounter copy(connection, counter);
                return numberOf(receiptOfTransaction(copy.station, transaction));
            };
            const auto both = together(
                proxy, [&] { return printed(proxy.connectionString(), 1, 1); },
                [&] { return printed(m_server.connectionString(), guarded ? 1 : 2, second.toInt()); });
            QStringList told = logged();
            told.sort(); // each logs for itself, whoever comes first
            if (guarded) {
                QCOMPARE(both.join(u"; "_s), numbers);
                QCOMPARE(told, listOf(log));
            } else {
                QVERIFY2(told != listOf(log), "The guard was off, and no harm was done: this is no race");
            }
        }
    }

    void lostCommit_data()
    {
        drawnRows(uR"(
            it stood    | Unanswered | NO A 0001 | 1
            it was lost | Unsent     | none      | 0
        )"_s);
    }

    void lostCommit()
    {
        const auto [how, number, receipts] = cells<3>();
        sell(1, u"Water"_s, u"1"_s, u"1"_s);
        CuttingProxy proxy(m_server);
        DeedCounter counter(proxy.connectionString());
        proxy.cutAt(u"COMMIT"_s, how == u"Unsent" ? CuttingProxy::Cut::Unsent : CuttingProxy::Cut::Unanswered);
        QString got = u"none"_s;
        try {
            got = numberOf(receiptOfTransaction(counter.station, 1));
        } catch (const NotDone &reason) {
            QVERIFY(QString::fromUtf8(reason.what()).contains(u"The receipt of transaction 1 was not recorded"_s));
        }
        QCOMPARE(got, number);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_counter1 WHERE c_receipt=1"_s), QStringList{receipts});
        QCOMPARE(logged().size(), receipts.toInt());
        QCOMPARE(numberOf(receiptOfTransaction(counter.station, 1)), u"NO A 0001"_s);
        QCOMPARE(logged(), QStringList{u"Receipt Printed 1"_s});
    }

    void invoiceOfThreeHours()
    {
        prices();
        for (const QString &hour : {u"18"_s, u"20"_s, u"24"_s})
            book(hour, u"Smith"_s);
        m_server.exec(
            u"UPDATE tbl_booking SET b_specialrate='member', b_extratime=15 WHERE b_datetime NOT LIKE '%24:00%';"
            "UPDATE tbl_booking SET b_invoice=41 WHERE b_datetime LIKE '%18:00%'"_s);
        const QStringList notices{u"inform: The customer got member rate [Information]"_s,
                                  u"inform: The customer got extra time [Information]"_s};
        TestStation station(m_server, notices + notices);
        station.CurrentStaff = u"anna"_s;
        m_server.startLog();
        const auto invoice =
            invoiceOfSelection(station, drawnDay(day, 8, {u">18:00 Smith"_s, u">20:00 Smith"_s, u">24:00 Smith"_s}));
        const auto update = [](const QString &hour) {
            return u"UPDATE tbl_booking SET b_invoice=42 WHERE b_datetime = '2026-11-14 %1:00:00' AND b_field=8"_s.arg(
                hour);
        };
        const QStringList log = m_server.takeLog();
        QCOMPARE(log.first(5), (QStringList{u"SELECT MAX(b_invoice) FROM tbl_booking"_s, update(u"18"_s),
                                            update(u"20"_s), update(u"24"_s),
                                            u"INSERT INTO tbl_log SET log_counter= 1, log_staffname='anna', "
                                            "log_datetime='2026-11-14 14:59:59', log_do='Invoice Printed 42'"_s}));
        QCOMPARE(log.mid(8, 3),
                 (QStringList{
                     u"SELECT b_specialrate from tbl_booking where b_datetime=\"2026-11-14 20:00:00\" AND b_field=8"_s,
                     u"SELECT * from tbl_rate where r_day LIKE \"Saturday\" AND r_field=8 AND r_special = \"member\" "
                     "AND r_timestart<=20 and r_timestop>=20"_s,
                     u"SELECT b_extratime from tbl_booking where b_datetime=\"2026-11-14 20:00:00\" AND b_field=8"_s}));
        QCOMPARE(drawn(invoice),
                 (QStringList{u"INVOICE NO A 0042 $ 91.38"_s, u"1| Field Number 9 14/11/2026 18:00|20.57|1.25|25.71"_s,
                              u"2| Field Number 9 14/11/2026 20:00|20.57|1.25|25.71"_s, // 25.7125 twice is 51.43
                              u"3| Field Number 9 14/11/2026 24:00|39.96|1|39.96"_s}));
        TestStation second(m_server, notices, 2); // the number is the centre's
        QCOMPARE(numberOf(invoiceOfSelection(second, drawnDay(day, 8, {u">18:00 Smith"_s}))), u"NO B 0043"_s);
        m_server.exec(u"UPDATE tbl_booking SET b_invoice=32767 LIMIT 1"_s);
        QVERIFY_THROWS_EXCEPTION(ConversionError,
                                 static_cast<void>(invoiceOfSelection(second, drawnDay(day, 8, {u">18:00 Smith"_s}))));
    }

    void refusedInvoices_data()
    {
        // The hours that the grid shows selected, beside Smith's at 18:00; what the tables say by now; the refusal.
        drawnRows(uR"(
            empty      | 19:00 |       | You cannot print invoice for empty slot
            paid       | 19:00 Lee paid 5.00 | | The slot already paid
            extra time | 19:00 +30 |   | The slot is an extra time of previous slot, use the previous slot to print for an invoice
            partial    | 19:00 Partially Shared | | The slot is booked by one or more individual slots
            shared     | 19:00 Shared Booking | | Please print via master slots
            first one  | 19:00 Shared Booking; 20:00 | | Please print via master slots
            rebooked   | 19:00 Lee | INSERT INTO tbl_booking SET b_datetime='2026-11-14 19:00:00', b_field=8, b_bookername='Kim' | This hour has changed meanwhile: Kim
            cleared    | 19:00 Lee |   | This hour has changed meanwhile: it is free now
            now paid   | 19:00 Lee | INSERT INTO tbl_booking SET b_datetime='2026-11-14 19:00:00', b_field=8, b_bookername='Lee', b_paid=1 | The slot already paid
        )"_s);
    }

    void refusedInvoices()
    {
        const auto [rows, change, refusal] = cells<3>();
        book(u"18"_s, u"Smith"_s);
        if (!change.isEmpty())
            m_server.exec(change);
        QStringList lines{u">18:00 Smith"_s};
        for (const QString &row : listOf(rows))
            lines << u'>' + row;
        TestStation station(m_server, {u"refuse: "_s + refusal});
        QCOMPARE(numberOf(invoiceOfSelection(station, drawnDay(day, 8, lines))), u"none"_s);
        QCOMPARE(m_server.rows(u"SELECT MAX(b_invoice) FROM tbl_booking"_s), QStringList{u"0"_s});
        QCOMPARE(logged(), QStringList());
    }

    // Nobody shares an invoice number: the second counter waits for the first one.
    void twoInvoicesAtOnce()
    {
        book(u"18"_s, u"Smith"_s);
        book(u"20"_s, u"Smith"_s);
        CuttingProxy proxy(m_server);
        proxy.holdAt(u"UPDATE tbl_booking SET b_invoice"_s);
        const auto printed = [](const QString &connection, int counter, const QString &row) {
            DeedCounter copy(connection, counter);
            return numberOf(invoiceOfSelection(copy.station, drawnDay(day, 8, {row})));
        };
        QCOMPARE(together(
                     proxy, [&] { return printed(proxy.connectionString(), 1, u">18:00 Smith"_s); },
                     [&] { return printed(m_server.connectionString(), 2, u">20:00 Smith"_s); }),
                 (QStringList{u"NO A 0001"_s, u"NO B 0002"_s}));
    }

private:
    void sell(int transaction, const QString &item, const QString &price, const QString &quantity) const
    {
        m_server.exec(u"INSERT INTO tbl_counter1 SET c_transaction=%1, c_item='%2', c_itemprice=%3, c_itemquantity=%4, "
                      "c_itemtotal=%3*%4"_s.arg(QString::number(transaction), item, price, quantity));
    }

    void book(const QString &hour, const QString &name) const
    {
        m_server.exec(
            u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 %1:00:00', b_field=8, b_bookername='%2'"_s.arg(hour,
                                                                                                                name));
    }

    void prices() const
    {
        m_server.exec(u"INSERT INTO tbl_rate (r_day, r_field, r_special, r_timestart, r_timestop, r_rate) VALUES "
                      "('Saturday', 8, '', 8, 23, 39.95), ('Saturday', 8, '', 0, 2, 39.96), "
                      "('Saturday', 8, 'member', 18, 20, 20.57)"_s);
    }

    [[nodiscard]] QStringList logged() const { return m_server.rows(u"SELECT log_do FROM tbl_log ORDER BY log_id"_s); }

    /// Holds the first one in the middle until the second one is through or waits; gives what both say.
    QStringList together(CuttingProxy &proxy, const std::function<QString()> &first,
                         const std::function<QString()> &second) const
    {
        QString one;
        QString other;
        const std::unique_ptr<QThread> firstThread(QThread::create([&] { one = first(); }));
        firstThread->start();
        const bool isHeld = proxy.waitUntilHeld();
        const std::unique_ptr<QThread> secondThread(QThread::create([&] { other = second(); }));
        secondThread->start();
        while (isHeld && !secondThread->isFinished() &&
               m_server.rows(u"SELECT 1 FROM information_schema.processlist WHERE state='User lock'"_s).isEmpty())
            QThread::msleep(5);
        proxy.letGo();
        firstThread->wait();
        secondThread->wait();
        return {isHeld ? one : u"never held"_s, other};
    }

    PrivateServer m_server;
    QTemporaryDir m_config;
};

QTEST_GUILESS_MAIN(tst_Receipts)
#include "tst_Receipts.moc"
