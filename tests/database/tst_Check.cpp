#include "support/Check.h"

#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// database/check finds what it is there to find, and nothing on a day that is whole.
class tst_Check : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsDamage_data()
    {
        // What is done to the tables behind the program's back, and the faults with their fields.
        drawnRows(uR"(
            nothing              | DO 0 |
            an old record        | INSERT INTO tbl_booking SET b_datetime=AT22, b_field=7, b_bookername='Old', b_staffname='olga', b_extratime=15 |
            last hour            | UPDATE tbl_booking SET b_datetime='2026-11-14 02:00:00' WHERE b_bookername='Single'; UPDATE tbl_remark SET m_datetime='2026-11-14 02:00:00' WHERE m_field=8 |
            next day's first     | INSERT INTO tbl_booking SET b_datetime='2026-11-14 03:00:00', b_field=6, b_bookername='A', b_staffname='o'; INSERT INTO tbl_booking SET b_datetime='2026-11-14 02:00:00', b_field=6, b_bookername='A', b_staffname='o', b_extratime=15 |
            one slot twice       | ALTER TABLE tbl_booking DROP KEY slot_of_one_booker; INSERT INTO tbl_booking SET b_datetime=AT20, b_field=8, b_bookername='Other', b_staffname='o' | two bookers in one slot 8
            half of a whole      | INSERT INTO tbl_booking SET b_datetime=AT18, b_field=2, b_bookername='Other', b_staffname='o' | two bookers on the same ground 0; a booking without the Partially Shared row of its whole 2
            whole over its halves | INSERT INTO tbl_booking SET b_datetime=AT18, b_field=3, b_bookername='Other', b_staffname='o' | a booking without the Shared Booking row of a partner 3; a booking without the Shared Booking row of a partner 3; two bookers on the same ground 3; two bookers on the same ground 3
            extra time on itself | INSERT INTO tbl_booking SET b_datetime=AT21, b_field=8, b_bookername='Next', b_staffname='o' | extra time into ground that is sold 8
            over midnight        | INSERT INTO tbl_booking SET b_datetime='2026-11-14 24:00:00', b_field=6, b_bookername='A', b_staffname='o', b_extratime=15; INSERT INTO tbl_booking SET b_datetime='2026-11-14 01:00:00', b_field=6, b_bookername='B', b_staffname='o' | extra time into ground that is sold 6
            extra time elsewhere | UPDATE tbl_booking SET b_extratime=15, b_staffname='o' WHERE b_bookername='Left'; INSERT INTO tbl_booking SET b_datetime=AT19, b_field=3, b_bookername='Next', b_staffname='o'; INSERT INTO tbl_booking (b_datetime, b_field, b_bookername) VALUES (AT19, 4, 'Shared Booking'), (AT19, 5, 'Shared Booking') | extra time into ground that is sold 4
            no marker row        | DELETE FROM tbl_booking WHERE b_field=1 | a booking without the Shared Booking row of a partner 0
            no booking           | DELETE FROM tbl_booking WHERE b_bookername='Whole' | a booking that is gone without a remark 0; a Shared Booking row without its booking 1; a Shared Booking row without its booking 2
            no partially         | DELETE FROM tbl_booking WHERE b_field=3 | a booking without the Partially Shared row of its whole 4; a booking without the Partially Shared row of its whole 5
            counts too little    | UPDATE tbl_booking SET b_shared=1 WHERE b_field=3 | a Partially Shared row that counts wrong 3
            counts too much      | UPDATE tbl_booking SET b_shared=3 WHERE b_field=3 | a Partially Shared row that counts wrong 3
            counts nobody        | INSERT INTO tbl_booking SET b_datetime=AT21, b_field=0, b_bookername='Partially Shared' | a Partially Shared row that counts wrong 0
            marker twice         | INSERT INTO tbl_booking SET b_datetime=AT18, b_field=3, b_bookername='Partially Shared', b_shared=2 | a marker row twice 3
            unknown booking      | INSERT INTO tbl_booking SET b_datetime=AT22, b_field=8, b_bookername='Other' | a booking without its remark 8
            back after clearing  | INSERT INTO tbl_booking SET b_datetime=AT20, b_field=7, b_bookername='Cleared' | a booking without its remark 7
            marker unknown       | DELETE FROM tbl_remark WHERE m_field=2 AND m_job='book' | a Shared Booking row without its remark 2
            a count unknown      | DELETE FROM tbl_remark WHERE m_field=3 LIMIT 1 | a Partially Shared row without its remarks 3
            extra time unknown   | UPDATE tbl_booking SET b_extratime=15 WHERE b_bookername='Right' | extra time without its remark 5
            other extra time     | UPDATE tbl_booking SET b_extratime=45 WHERE b_bookername='Single' | extra time without its remark 8
            extra time taken     | UPDATE tbl_booking SET b_extratime=0 WHERE b_bookername='Single' | extra time that is gone without a remark 8
            paid no more         | UPDATE tbl_booking SET b_paid=0 WHERE b_bookername='Right' | a sold hour with another amount 5
            sold at two counters | INSERT INTO tbl_counter2 (c_item, c_itemtotal, c_datetime) SELECT c_item, c_itemtotal, c_datetime FROM tbl_counter1 WHERE c_itemtotal=40 | a sold hour with another amount 5
            paid, never sold     | UPDATE tbl_booking SET b_paid=40 WHERE b_bookername='Single'; UPDATE tbl_counter1 SET c_datetime='2026-10-13 10:00:00' | a paid hour that no counter sold 8
            older than the sales | UPDATE tbl_booking SET b_paid=40 WHERE b_bookername='Single' |
            one receipt twice    | UPDATE tbl_counter2 SET c_receipt=3; INSERT INTO tbl_counter2 SET c_transaction=7, c_receipt=3 | one receipt number on two sales NULL
            half a receipt       | UPDATE tbl_counter1 SET c_receipt=3 WHERE c_item='Cola' | two receipt numbers on one sale NULL
            other rate           | UPDATE tbl_booking SET b_specialrate='' WHERE b_bookername='Single' | a rate that is not the one of its remark 8
        )"_s);
    }

    void findsDamage()
    {
        m_server.freshDatabase();
        makeDay();
        auto [damage, wanted] = cells<2>();
        damage.replace(QRegularExpression(u"AT(\\d\\d)"_s), u"'2026-11-14 \\1:00:00'"_s);
        m_server.exec(damage);
        QStringList found;
        for (const QString &line : findings(m_server))
            found << line.section(u'|', 0, 0) + u' ' + line.section(u'|', 2, 2);
        QCOMPARE(found, listOf(wanted));
    }

    void sampleCentreIsWhole()
    {
        m_server.freshDatabase();
        QFile sample(QStringLiteral(TAMSORA_DATABASE "/sample_centre.sql"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        m_server.exec(QString::fromUtf8(sample.readAll()));
        QCOMPARE(findings(m_server), QStringList());
    }

    // Through two levels, and by way of a part that two wholes hold.
    void tangledGround_data()
    {
        drawnRows(uR"(
            whole and part of a part | 0 | 3 | 1
            two wholes with a part   | 1 | 4 | 1
            two parts of a whole     | 2 | 3 | 0
            apart                    | 4 | 3 | 0
        )"_s);
    }

    void tangledGround()
    {
        m_server.freshDatabase();
        const auto [one, other, found] = cells<3>();
        m_server.exec(u"INSERT INTO tbl_booking (b_datetime, b_field, b_bookername, b_staffname) VALUES "
                      "('2026-11-14 18:00:00', %1, 'A', 'o'), ('2026-11-14 18:00:00', %2, 'B', 'o')"_s.arg(one, other));
        const auto lines = findings(m_server, {u"0&1"_s, u"1&2"_s, u"1&3"_s, u"4&2"_s});
        QCOMPARE(lines.filter(u"same ground"_s).size(), found.toInt());
    }

    void script()
    {
        m_server.freshDatabase();
        makeDay();
        QTemporaryDir folder;
        QFile settings(folder.filePath(u"tamsora.ini"_s));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("[System]\r\nhour_start=8\r\nhour_end=2\r\ndatabase_user=counter\r\ndatabase_password=\r\n"
                       "DATABASE_SERVER = " +
                       m_server.socketPath().toUtf8() +
                       "\r\n; Shared0=7&8\r\n[shared]\r\nShared0=0&1\r\nShared1=0&2\r\nSHARED2 = 3 & 4\r\n"
                       "Shared3=\"3&5\"\r\nShared5=7&8\r\n");
        settings.close();
        const QStringList here{u"--settings"_s, settings.fileName()};
        QCOMPARE(run(here), u"0: "_s);
        m_server.exec(
            u"UPDATE tbl_booking SET b_shared=1 WHERE b_field=3;"
            "INSERT INTO tbl_booking SET b_datetime='2026-11-14 24:00:00', b_field=7, b_bookername='O\\'Neil'"_s);
        QCOMPARE(run(here),
                 u"1: 2026-11-14 18:00, field 3: a Partially Shared row that counts wrong (it says 1, on the "
                 "parts stand 2)\n2026-11-14 24:00, field 7: a booking without its remark (O'Neil)\n"_s);
        QCOMPARE(run(here + QStringList{u"--socket"_s, m_server.socketPath(), u"--user"_s, u"root"_s}, "\n").left(2),
                 u"1:"_s);
        QCOMPARE(run(here + QStringList{u"--user"_s, u"nobody"_s}, "\n"), u"2: "_s);
        QCOMPARE(run({u"--settings"_s, folder.filePath(u"none.ini"_s)}), u"2: "_s);
        m_server.exec(u"DROP TABLE tbl_remark"_s);
        QCOMPARE(run(here), u"2: "_s);
    }

private:
    void makeDay()
    {
        DeedCounter(m_server.connectionString())
            .actAll(u"book 18:00 0 Whole; book 18:00 4 Left; book 18:00 5 Right; book 20:00 7 Cleared; "
                    "book 20:00 8 Single; extra 20:00 8 Single; rate 20:00 8 Single; clear 20:00 7 Cleared; "
                    "sell 18:00 5 Right"_s);
        m_server.exec(u"CREATE TABLE tbl_counter2 LIKE tbl_counter1; INSERT INTO tbl_counter2 SET c_transaction=1"_s);
    }

    /// The exit code and what stands on standard output.
    static QString run(const QStringList &options, const QByteArray &input = {})
    {
        QProcess check;
        check.start(QStringLiteral(TAMSORA_DATABASE "/check"), options);
        check.write(input);
        check.closeWriteChannel();
        if (!check.waitForFinished())
            return u"did not end"_s;
        return QString::number(check.exitCode()) + u": "_s + QString::fromUtf8(check.readAllStandardOutput());
    }

    PrivateServer m_server;
};

QTEST_GUILESS_MAIN(tst_Check)
#include "tst_Check.moc"
