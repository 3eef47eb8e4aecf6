#include "support/DrawnRows.h"
#include "support/PrivateServer.h"
#include "support/Script.h"

#include <QFile>
#include <QMap>
#include <QTest>

using namespace Qt::StringLiterals;

/// database/install brings up a database that was made elsewhere, and loses nothing on the way.
class tst_Install : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_server.freshDatabase(); }

    void bringsUpWhatWasMadeElsewhere()
    {
        makeElsewhere();
        const auto before = sums();
        QVERIFY(before.size() >= 20);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_booking WHERE b_bookername LIKE '%ö%'"_s) !=
                     QStringList{u"0"_s},
                 true);
        const auto elsewhere = structures();

        const ScriptEnd looked = install({u"--check-only"_s});
        QVERIFY2(looked.code == 0 && looked.found.isEmpty(), qPrintable(looked.found + looked.said));
        QVERIFY(looked.said.contains(u"tbl_light: is missing and is made"_s));
        QCOMPARE(structures(), elsewhere);

        for (const QString &moment : {u" 3 of"_s, u" 9 of"_s, u" 15 of"_s}) {
            QVERIFY(stopScript(u"install"_s, server(), moment.mid(1), true));
            QVERIFY(structures() != m_wanted);
            QCOMPARE(sums(), before);
        }
        QVERIFY(stopScript(u"install"_s, server(), u"16 of"_s, false));
        QCOMPARE(m_server.rows(u"SHOW DATABASES LIKE 'tamsora%'"_s), QStringList());

        const ScriptEnd done = install();
        QVERIFY2(done.code == 0 && done.said.contains(u"posdb is ready."_s), qPrintable(done.found + done.said));
        QCOMPARE(structures(), m_wanted);
        QCOMPARE(sums(), before);

        const QString alters =
            u"SHOW GLOBAL STATUS WHERE Variable_name IN ('Com_alter_table', 'Com_update', 'Com_delete')"_s;
        const QStringList altersBefore = m_server.rows(alters);
        const ScriptEnd again = install();
        QVERIFY2(again.code == 0 && again.said.contains(u" 0 made or changed, 0 left"_s), qPrintable(again.said));
        QCOMPARE(m_server.rows(alters), altersBefore);
    }

    void namesWhatStandsInTheWay_data()
    {
        // What is done to the tables, the table that must stay as it was, and what is named.
        drawnRows(uR"(
            two bookers   | ALTER TABLE tbl_booking DROP KEY slot_of_one_booker; INSERT INTO tbl_booking (b_datetime, b_field, b_bookername) VALUES ('2026-11-14 24:00:00', 3, 'Ann'), ('2026-11-14 24:00:00', 3, 'Bob'), ('2026-11-14 01:00:00', 3, 'Shared Booking'), ('2026-11-14 01:00:00', 3, 'Shared Booking'), ('2026-11-14 01:00:00', 3, 'Ann') | tbl_booking | tbl_booking: 2026-11-14 24:00, field 3: two bookers in one slot (Ann, Bob)
            no markers    | ALTER TABLE tbl_booking DROP KEY slot_of_one_booker, DROP b_exclusive, CONVERT TO CHARACTER SET latin1; INSERT INTO tbl_booking (b_datetime, b_field, b_bookername) VALUES ('2026-11-14 08:00:00', 0, 'Jörg'), ('2026-11-14 08:00:00', 0, 'shared booking') | tbl_booking | tbl_booking: 2026-11-14 08:00, field 0: two bookers in one slot (Jörg, shared booking)
            too long      | ALTER TABLE tbl_member MODIFY m_tel TEXT; INSERT INTO tbl_member SET m_id=7, m_tel=REPEAT('ö', 65); INSERT INTO tbl_member SET m_id=8, m_tel=REPEAT('ö', 64) | tbl_member | tbl_member: m_id 7, m_tel: is too long, 64 letters fit (öööööööööööööööööööööööööööööööööööööööö)
            no number     | ALTER TABLE tbl_counter1 MODIFY c_receipt VARCHAR(20), MODIFY c_itemprice VARCHAR(20), MODIFY c_itemquantity VARCHAR(20); INSERT INTO tbl_counter1 VALUES (1, 1, NULL, '', '12,50', '1.5', 3, '', 'R12', ''), (2, 1, NULL, '', '12.50', 'x', 3, '', ' 3 ', ''), (3, 1, NULL, '', '1.005', '2', 3, '', '3.5', ''), (4, 1, NULL, '', '12345678901', '2', 3, '', '99999999999', '') | tbl_counter1 | tbl_counter1: c_id 1, c_itemprice: is no number (12,50); tbl_counter1: c_id 3, c_itemprice: is a number that does not fit (1.005); tbl_counter1: c_id 4, c_itemprice: is a number that does not fit (12345678901); tbl_counter1: c_id 2, c_itemquantity: is no number (x); tbl_counter1: c_id 1, c_receipt: is no whole number (R12); tbl_counter1: c_id 3, c_receipt: is no whole number (3.5); tbl_counter1: c_id 4, c_receipt: is a number that does not fit (99999999999)
            no slot       | ALTER TABLE tbl_waitlist MODIFY w_datetime VARCHAR(30) NULL; INSERT INTO tbl_waitlist (w_id, w_datetime) VALUES (1, '2026-11-14 8:00:00'), (2, '2026-11-14 00:00:00'), (3, '2026-13-14 08:00:00'), (4, NULL), (5, '2026-11-14 24:00:00') | tbl_waitlist | tbl_waitlist: w_id 1, w_datetime: is no slot (2026-11-14 8:00:00); tbl_waitlist: w_id 2, w_datetime: is no slot (2026-11-14 00:00:00); tbl_waitlist: w_id 3, w_datetime: is no slot (2026-13-14 08:00:00); tbl_waitlist: w_id 4, w_datetime: is no slot (NULL)
            no time       | ALTER TABLE tbl_staff MODIFY st_lastlogin VARCHAR(40); INSERT INTO tbl_staff (st_id, st_login, st_access, st_lastlogin) VALUES (1, 'a', 1, 'yesterday'), (2, 'b', 1, '2026-02-30 10:00:00'), (3, 'c', 1, '2026-02-20 10:00') | tbl_staff | tbl_staff: st_id 1, st_lastlogin: is no time (yesterday); tbl_staff: st_id 2, st_lastlogin: is no time (2026-02-30 10:00:00)
            one counter twice | ALTER TABLE tbl_system DROP PRIMARY KEY; INSERT INTO tbl_system (sys_counter) VALUES (1), (2), (2) | tbl_system | tbl_system: sys_counter 2: stands in 2 rows
            empty values  | ALTER TABLE tbl_item MODIFY i_price VARCHAR(9), MODIFY i_key VARCHAR(16) NULL; INSERT INTO tbl_item VALUES (1, 'Ball', '', NULL, '', 1) | tbl_item | tbl_item: i_key: 1 rows hold NULL, which would become ''; tbl_item: i_price: 1 rows hold an empty text, which would become 0
            a view        | DROP TABLE tbl_log; CREATE VIEW tbl_log AS SELECT 1 | tbl_log | tbl_log: is a view and no table
        )"_s);
    }

    void namesWhatStandsInTheWay()
    {
        auto [damage, table, wanted] = cells<3>();
        readWanted();
        m_server.exec(u"ALTER TABLE tbl_student ENGINE=MyISAM; DROP TABLE tbl_waitlist_clipboard; "_s + damage);
        const QString damaged = structures().value(table);
        const ScriptEnd end = install();
        QVERIFY2(end.code == 1, qPrintable(end.said));
        QCOMPARE(end.found.split(u'\n', Qt::SkipEmptyParts), listOf(wanted));
        auto now = structures();
        QCOMPARE(now.value(table), damaged);
        now.remove(table);
        auto others = m_wanted;
        others.remove(table);
        QCOMPARE(now, others);
    }

    void fillsOnlyWhenAllowed()
    {
        readWanted();
        m_server.exec(
            u"ALTER TABLE tbl_item MODIFY i_price VARCHAR(9), MODIFY i_key VARCHAR(16) NULL;"
            "ALTER TABLE tbl_counter1 MODIFY c_receipt VARCHAR(20) NULL, "
            "MODIFY c_datetime TIMESTAMP NOT NULL DEFAULT CURRENT_TIMESTAMP ON UPDATE CURRENT_TIMESTAMP;"
            "ALTER TABLE tbl_light MODIFY l_datetime VARCHAR(30) NOT NULL, MODIFY l_field ENUM('3', '1');"
            "INSERT INTO tbl_light (l_id, l_datetime, l_field) VALUES (1, '', '1'), (2, '2026-11-14 20:00:00', '3');"
            "INSERT INTO tbl_item VALUES (1, 'Ball', '', NULL, '', 1), (2, 'Net', '', 'F2', '12.5', 1);"
            "INSERT INTO tbl_counter1 (c_id, c_datetime, c_receipt) VALUES (1, '2020-01-02 03:04:05', NULL), "
            "(2, '2020-01-02 03:04:05', ''), (3, '2020-01-02 03:04:05', '7')"_s);
        QCOMPARE(install().code, 1);
        QCOMPARE(m_server.rows(u"SELECT COUNT(*) FROM tbl_item WHERE i_key IS NULL AND i_price = ''"_s),
                 QStringList{u"1"_s});
        const ScriptEnd end = install({u"--fill-empty"_s});
        QVERIFY2(end.code == 0, qPrintable(end.said + end.found));
        QCOMPARE(structures(), m_wanted);
        QCOMPARE(m_server.rows(u"SELECT i_key, i_price FROM tbl_item"_s), (QStringList{u"|0.00"_s, u"F2|12.50"_s}));
        QCOMPARE(m_server.rows(u"SELECT c_datetime, c_receipt FROM tbl_counter1"_s),
                 (QStringList{u"2020-01-02 03:04:05|0"_s, u"2020-01-02 03:04:05|0"_s, u"2020-01-02 03:04:05|7"_s}));
        QCOMPARE(m_server.rows(u"SELECT l_datetime, l_field FROM tbl_light"_s),
                 (QStringList{u"NULL|1"_s, u"2026-11-14 20:00:00|3"_s}));
    }

private:
    [[nodiscard]] QStringList server() const { return {u"--socket"_s, m_server.socketPath()}; }

    /// With what is asked for: password, the administrator twice, the account's password.
    [[nodiscard]] ScriptEnd install(const QStringList &options = {}) const
    {
        return runScript(u"install"_s, server() + options, "\nboss\nsecret12\nsecret12\n\n");
    }

    /// Every statement that a query gives.
    void execAll(const QString &query) const
    {
        for (const QString &statement : m_server.rows(u"SET SESSION group_concat_max_len=100000; "_s + query))
            m_server.exec(u"SET sql_mode=''; "_s + statement);
    }

    /// The sample centre as another program might have left it: MyISAM, latin1, no keys but the ids, other types.
    void makeElsewhere()
    {
        QFile sample(QStringLiteral(TAMSORA_DATABASE "/sample_centre.sql"));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        m_server.exec(
            u"CREATE TABLE tbl_counter12 LIKE tbl_counter1; CREATE TABLE tbl_specialgroup5 LIKE tbl_specialgroup1;"
            "CREATE TABLE tbl_booking_clipboard2 LIKE tbl_booking_clipboard1; CREATE TABLE tbl_shift2 LIKE tbl_shift1;"_s +
            QString::fromUtf8(sample.readAll()));
        m_server.exec(
            u"INSERT INTO tbl_booking_clipboard2 SET b_datetime='2026-11-14 24:00:00', b_bookername='Zoë';"
            "INSERT INTO tbl_shift2 SET sh_lastdatetime='2026-11-14 10:00:00', sh_float=12.5, sh_stocklog='Bälle=3|';"
            "INSERT INTO tbl_log SET log_do='tab\\tline\\nend\\\\ äöü€'"_s);
        readWanted();
        execAll(
            u"SELECT CONCAT('ALTER TABLE ', TABLE_NAME, ' ', GROUP_CONCAT(DISTINCT 'DROP KEY ', INDEX_NAME)) FROM "
            "information_schema.STATISTICS WHERE TABLE_SCHEMA='posdb' AND INDEX_NAME<>'PRIMARY' GROUP BY TABLE_NAME"_s);
        m_server.exec(u"ALTER TABLE tbl_booking DROP COLUMN b_exclusive"_s);
        execAll(
            u"SELECT CONCAT('ALTER TABLE ', TABLE_NAME, ' ENGINE=MyISAM, ROW_FORMAT=DYNAMIC, CONVERT TO CHARACTER SET "
            "latin1, COMMENT=\"\"') FROM information_schema.TABLES WHERE TABLE_SCHEMA='posdb'"_s);
        m_server.exec(
            u"ALTER DATABASE posdb CHARACTER SET latin1; DROP TABLE tbl_light;"
            "ALTER TABLE tbl_waitlist_clipboard DROP COLUMN w_staffname, DROP PRIMARY KEY, DROP COLUMN w_id;"
            "ALTER TABLE tbl_counter1 MODIFY c_receipt VARCHAR(20), MODIFY c_itemprice FLOAT, MODIFY c_item CHAR(200);"
            "ALTER TABLE tbl_counter2 MODIFY c_datetime TIMESTAMP NULL, MODIFY c_itemquantity DECIMAL(10,4);"
            "ALTER TABLE tbl_booking MODIFY b_paid VARCHAR(12), MODIFY b_field TINYINT AFTER b_paid, ENGINE=Aria;"
            "ALTER TABLE tbl_staff MODIFY st_access ENUM('1', '0', '2'), ADD UNIQUE KEY one_each (st_login);"
            "ALTER TABLE tbl_shift2 MODIFY sh_lastdatetime DATETIME, MODIFY sh_stocklog LONGTEXT;"
            "ALTER TABLE tbl_member CHANGE m_name M_NAME VARCHAR(255), ADD KEY of_theirs (m_idno)"_s);
    }

    /// What every table should be in the end, and how its rows are added up whatever the types of its columns are.
    void readWanted()
    {
        m_wanted = structures();
        m_sums.clear();
        const auto columns = m_server.rows(
            u"SELECT TABLE_NAME, COLUMN_NAME, NUMERIC_PRECISION IS NOT NULL FROM information_schema.COLUMNS WHERE "
            "TABLE_SCHEMA='posdb' AND EXTRA NOT LIKE '%GENERATED%' AND TABLE_NAME NOT IN ('tbl_light', "
            "'tbl_waitlist_clipboard') ORDER BY TABLE_NAME, ORDINAL_POSITION"_s);
        for (const QString &row : columns) {
            const QString text = u"CONVERT(CONVERT("_s + row.section(u'|', 1, 1) + u", CHAR) USING utf8mb4)"_s;
            m_sums[row.section(u'|', 0, 0)] += u", QUOTE("_s + text + (row.endsWith(u'1') ? u" + 0)"_s : u")"_s);
        }
    }

    [[nodiscard]] QMap<QString, QString> structures() const
    {
        QMap<QString, QString> found;
        for (const QString &table : m_server.rows(u"SHOW TABLES"_s)) {
            QString text = m_server.rows(u"SHOW CREATE TABLE "_s + table).join(u'\n');
            found[table] = text.remove(QRegularExpression(u" AUTO_INCREMENT=\\d+"_s));
        }
        return found;
    }

    [[nodiscard]] QMap<QString, QStringList> sums() const
    {
        QMap<QString, QStringList> found;
        for (const auto &[table, texts] : m_sums.asKeyValueRange())
            found[table] = m_server.rows(u"SELECT COUNT(*), SUM(CRC32(CONCAT_WS(','%2))) FROM %1"_s.arg(table, texts));
        return found;
    }

    PrivateServer m_server;
    QMap<QString, QString> m_wanted;
    QMap<QString, QString> m_sums; ///< by table
};

QTEST_GUILESS_MAIN(tst_Install)
#include "tst_Install.moc"
