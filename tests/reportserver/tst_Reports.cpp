#include "app/Database.h"
#include "reportserver/ReportServer.h"
#include "support/DrawnRows.h"
#include "support/PrivateServer.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <future>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QString day = u"/report/booking.asp?date=2026-11-14"_s;
// The till's day runs from the middle of the closed hours, 3 to 8, to the next.
const QString tillDay = u"c_datetime >= '2026-11-14 05:00:00' AND c_datetime < '2026-11-15 05:00:00'"_s;
const QString isHour = u"c_item LIKE 'Field Number % __/__/____ __:__'"_s;
const QString ownRows = u"b_datetime LIKE '2026-11-14%' AND b_bookername NOT IN "
                        "('', 'Shared Booking', 'Partially Shared')"_s;

/// An answer with its head, as it came through the wire.
struct Answer
{
    int status = 0;
    QByteArray head;
    QByteArray body;

    /// What stands in the tables, a line each, the cells ended by "|"; tiles are "title|figure remark|".
    [[nodiscard]] QStringList lines() const
    {
        QString text = QString::fromUtf8(body);
        static const QRegularExpression ends(u"</t[dh]>|</dt>|</dd>"_s);
        static const QRegularExpression breaks(u"</tr>|</div>|</h[123]>|</p>|</nav>"_s);
        static const QRegularExpression tags(u"<[^>]*>"_s);
        text.remove(u'\n').replace(ends, u"|"_s).replace(breaks, u"\n"_s).remove(tags);
        text.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s).replace(u"&quot;"_s, u"\""_s);
        text.replace(u"&#39;"_s, u"'"_s).replace(u"&amp;"_s, u"&"_s);
        return text.split(u'\n');
    }
};

} // namespace

/// The report server before a real database and real browsers, on a day with everything that may stand in a table.
class tst_Reports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_database.exec(u"CREATE TABLE tbl_counter2 LIKE tbl_counter1"_s); // its shifts are still to come
        QFile rows(QStringLiteral(TAMSORA_DATABASE "/../tests/reportserver/nasty_day.sql"));
        QVERIFY(rows.open(QIODevice::ReadOnly));
        m_database.exec(QString::fromUtf8(rows.readAll()));
        m_database.exec(shell(u"create_reports_account_sql localhost secret77; reports_grant_sql localhost "_s +
                              m_database.rows(shell(u"reports_tables_sql"_s)).join(u' ')));
        QFile file(m_folder.filePath(u"reports.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(settingsText());
        file.close();
        m_server = std::make_unique<ReportServer>(readReportSettings(file.fileName()),
                                                  [] { return QDateTime(QDate(2026, 11, 14), QTime(14, 59, 59)); });
        m_port = quint16(m_server->bind());
        QVERIFY(m_port > 0);
        m_serving = std::thread([this] { m_server->serve(); });
    }

    void cleanupTestCase()
    {
        m_server->stop();
        m_serving.join();
    }

    // Lines of a page, made by statements of their own; "~" ends a cell.
    void sums_data()
    {
        drawnRows(uR"(
            booked   | DAY | SELECT CONCAT('Hours booked~', COUNT(*), ' and ', SUM(b_extratime), ' extra minutes~') FROM tbl_booking WHERE OWN
            occupied | DAY | SELECT CONCAT('Occupancy~', ROUND(100 * COUNT(DISTINCT b_datetime, b_field) / 171), ' % ', COUNT(DISTINCT b_datetime, b_field), ' of 171 hours, with shared ground~') FROM tbl_booking WHERE b_datetime LIKE '2026-11-14%' AND b_bookername<>''
            paid     | DAY | SELECT CONCAT('Hours paid~', COUNT(*), ' worth ', FORMAT(SUM(b_paid), 2), '~') FROM tbl_booking WHERE OWN AND b_paid > 0
            unpaid   | DAY | SELECT CONCAT('Hours not paid~', COUNT(*), ' ', SUM(MID(b_datetime, 12, 2) BETWEEN '08' AND '13'), ' of them are played~') FROM tbl_booking WHERE OWN AND b_paid = 0
            taken    | DAY | SELECT CONCAT('Taken at the counters~', FORMAT(SUM(c_itemtotal), 2), ' hours ', FORMAT(SUM(IF(HOUR, c_itemtotal, 0)), 2), ', goods ', FORMAT(SUM(IF(HOUR, 0, c_itemtotal)), 2), '~') FROM (SELECT * FROM tbl_counter1 UNION ALL SELECT * FROM tbl_counter2) both_counters WHERE TILL
            waiting  | DAY | SELECT CONCAT('Waiting list~', COUNT(*), ' entries~') FROM tbl_waitlist WHERE w_datetime LIKE '2026-11-14%'
            field    | DAY | SELECT CONCAT('Court &~', COUNT(*), '~', ROUND(100 * COUNT(*) / 19), ' %~', SUM(b_paid > 0), '~', SUM(b_paid = 0), '~', FORMAT(SUM(b_paid), 2), '~1~') FROM tbl_booking WHERE OWN AND b_field = 6
            goods    | DAY | SELECT CONCAT(c_item, '~', SUM(c_itemquantity), '~', FORMAT(SUM(c_itemtotal), 2), '~') FROM (SELECT * FROM tbl_counter1 UNION ALL SELECT * FROM tbl_counter2) both_counters WHERE TILL AND NOT HOUR GROUP BY c_item
            counters | DAY | SELECT CONCAT('Counter 2~', FORMAT(SUM(IF(HOUR, c_itemtotal, 0)), 2), '~', FORMAT(SUM(IF(HOUR, 0, c_itemtotal)), 2), '~', FORMAT(SUM(c_itemtotal), 2), '~') FROM tbl_counter2 WHERE TILL
            shift    | DAY | SELECT CONCAT('1~evening~2026-11-15 03:10~anna~150.00~', FORMAT(sold, 2), '~250.50~', FORMAT(150 + sold - 250.50, 2), '~', FORMAT(sh_totalmoney, 2), '~', FORMAT(sh_totalmoney - (150 + sold - 250.50), 2), '~80.00~') FROM tbl_shift1, (SELECT SUM(c_itemtotal) AS sold FROM tbl_counter1 WHERE c_datetime > '2026-11-14 16:00:00' AND c_datetime <= '2026-11-15 03:10:00') sales WHERE sh_shift = 'evening'
            first    | DAY | SELECT '1~morning~2026-11-14 16:00~o\'hara~0.00~1,059.00~1.00~1,058.00~1,160.00~102.00~150.00~'
            lists    | DAY | SELECT CONCAT('24:00 to 01:00~', b_bookername, '~~', b_bookertel, '~normal rate~15 minutes~not paid~') FROM tbl_booking WHERE b_datetime = '2026-11-14 24:00:00'
            owed     | DAY | SELECT CONCAT('09:00 to 10:00~Court &~', b_bookername, '~', b_bookertel, '~special group 2 rate~yes~') FROM tbl_booking WHERE b_datetime = '2026-11-14 09:00:00'
            by day   | DAY&period=week | SELECT CONCAT('Sat 2026-11-14~', FORMAT(SUM(IF(n = 1, c_itemtotal, 0)), 2), '~', FORMAT(SUM(IF(n = 2, c_itemtotal, 0)), 2), '~', FORMAT(SUM(IF(HOUR, c_itemtotal, 0)), 2), '~', FORMAT(SUM(IF(HOUR, 0, c_itemtotal)), 2), '~', FORMAT(SUM(c_itemtotal), 2), '~~') FROM (SELECT 1 AS n, tbl_counter1.* FROM tbl_counter1 UNION ALL SELECT 2, tbl_counter2.* FROM tbl_counter2) both_counters WHERE TILL
            week     | DAY&period=week | SELECT CONCAT('Hours paid~', COUNT(*), ' worth ', FORMAT(SUM(b_paid), 2), '~') FROM tbl_booking WHERE b_datetime BETWEEN '2026-11-09' AND '2026-11-16' AND b_paid > 0
            month    | DAY&period=month | SELECT CONCAT('Hours paid~', COUNT(*), ' worth ', FORMAT(SUM(b_paid), 2), '~') FROM tbl_booking WHERE b_datetime LIKE '2026-11-%' AND b_paid > 0
            sale     | /report/counter.asp?counter=1&date=2026-11-14 | SELECT CONCAT(c_transaction, '~', MID(MIN(c_datetime), 12, 5), '~', c_staffid, '~', COUNT(*), '~', IF(MAX(c_receipt) > 0, MAX(c_receipt), ''), '~', FORMAT(SUM(c_itemtotal), 2), '~') FROM tbl_counter1 WHERE TILL GROUP BY c_transaction, c_staffid
            staff    | /report/counter.asp?counter=1&date=2026-11-14 | SELECT CONCAT(c_staffid, '~', COUNT(DISTINCT c_transaction), '~', FORMAT(SUM(c_itemtotal), 2), '~') FROM tbl_counter1 WHERE TILL GROUP BY c_staffid
            open     | /report/counter.asp?counter=1 | SELECT CONCAT('Since the last shift~', FORMAT(SUM(c_itemtotal), 2), ' that ended at 2026-11-15 03:10~') FROM tbl_counter1 WHERE c_datetime > '2026-11-15 03:10:00'
        )"_s);
    }

    void sums()
    {
        auto [path, statement] = cells<2>();
        statement.replace(u'~', u'|').replace(u"OWN"_s, ownRows).replace(u"TILL"_s, tillDay);
        statement.replace(QRegularExpression(u"\\bHOUR\\b"_s), isHour);
        const Answer answer = get(path.replace(u"DAY"_s, day));
        QCOMPARE(answer.status, 200);
        const QStringList wanted = m_database.rows(statement);
        QVERIFY(!wanted.isEmpty());
        const QStringList lines = answer.lines();
        for (const QString &line : wanted)
            QVERIFY2(lines.contains(line), qPrintable(line + u"\nis not in\n"_s + lines.join(u'\n')));
    }

    void refusals_data()
    {
        drawnRows(uR"(
            no day at all    | 200 | GET /report/booking.asp
            head             | 200 | HEAD /report/booking.asp
            first page       | 200 | GET /
            empty day        | 400 | GET /report/booking.asp?date=
            no such day      | 400 | GET /report/booking.asp?date=2026-02-30
            other form       | 400 | GET /report/booking.asp?date=14.11.2026
            with more        | 400 | GET /report/booking.asp?date=2026-11-14%27%20OR%201=1
            a line more      | 400 | GET /report/booking.asp?date=2026-11-14%0A
            far away         | 400 | GET /report/booking.asp?date=9999-12-31
            two days         | 400 | GET /report/booking.asp?date=2026-11-14&date=2026-11-15
            other period     | 400 | GET /report/booking.asp?period=year
            no counter       | 400 | GET /report/counter.asp
            counter of words | 400 | GET /report/counter.asp?counter=1;DROP
            leading zero     | 400 | GET /report/counter.asp?counter=01
            unknown counter  | 404 | GET /report/counter.asp?counter=7
            unknown page     | 404 | GET /report/../../etc/passwd
            marked up        | 404 | GET /%3Cscript%3E
            long             | 404 | GET /LONG
            too long         | 414 | GET /LONGLONGLONG
            post             | 405 | POST /report/booking.asp
            another host     | 421 | GET /@evil.example
        )"_s);
    }

    void refusals()
    {
        auto [status, request] = cells<2>();
        const QString host = request.contains(u'@') ? request.section(u'@', 1) : u"127.0.0.1:%1"_s.arg(m_port);
        request.replace(u"LONG"_s, u"x"_s.repeated(4000));
        const Answer answer = ask(request.section(u'@', 0, 0) + u" HTTP/1.1\r\nHost: "_s + host);
        QCOMPARE(answer.status, status.toInt());
        QCOMPARE(answer.body.isEmpty(), request.startsWith(u"HEAD"));
        QVERIFY(!answer.body.contains("<script"));
        for (const char *header : {"Cache-Control: no-store", "X-Content-Type-Options: nosniff", "Connection: close"})
            QVERIFY2(answer.head.contains(header), answer.head);
        QVERIFY(answer.head.contains("default-src 'none'; style-src 'sha256-"));
    }

    // A style that the policy does not know by its sum would not be used, and a name is never more than a name.
    void marksNothingUp()
    {
        const Answer answer = get(day);
        const qsizetype begin = answer.body.indexOf("<style>") + 7;
        const QByteArray style = answer.body.mid(begin, answer.body.indexOf("</style>") - begin);
        const QByteArray sum = QCryptographicHash::hash(style, QCryptographicHash::Sha256).toBase64();
        QVERIFY(answer.head.contains("'sha256-" + sum + "'"));
        QVERIFY(!answer.body.contains("<script"));
        QVERIFY(answer.body.contains("&lt;script&gt;alert(&quot;1&quot;)&lt;/script&gt;"));
        QVERIFY(!answer.body.contains(" style="));
    }

    void accountOnlyReadsReports_data()
    {
        drawnRows(uR"(
            change | UPDATE tbl_booking SET b_paid=1
            add    | INSERT INTO tbl_log SET log_do='x'
            delete | DELETE FROM tbl_counter1
            make   | CREATE TABLE tbl_x (x INT)
            drop   | DROP TABLE tbl_waitlist_clipboard
            staff  | SELECT st_password FROM tbl_staff
            people | SELECT * FROM tbl_member
        )"_s);
    }

    void accountOnlyReadsReports()
    {
        Database database(u"SERVER=%1;DATABASE=posdb;UID=tamsora_reports;PWD=secret77"_s.arg(m_database.socketPath()));
        DbConnection connection(database);
        const auto [statement] = cells<1>();
        QVERIFY_THROWS_EXCEPTION(DbError, (void)connection.query(statement));
        QVERIFY(connection.query(u"SELECT * FROM tbl_booking"_s).size() > 0);
    }

    void manyAtOnce()
    {
        const QByteArray alone = get(day).body;
        std::vector<std::future<QByteArray>> answers;
        answers.reserve(40);
        for (int i = 0; i < 40; ++i)
            answers.push_back(std::async(std::launch::async, [this] { return get(day).body; }));
        for (auto &answer : answers)
            QCOMPARE(answer.get(), alone);
    }

    // A pause of the database is waited for, its end is told without a word too much, and its return is noticed.
    void databaseAway()
    {
        m_database.pause();
        auto slow = std::async(std::launch::async, [this] { return get(day); });
        QCOMPARE(slow.wait_for(std::chrono::milliseconds(700)), std::future_status::timeout);
        m_database.resume();
        QCOMPARE(slow.get().status, 200);
        m_database.stop();
        const Answer away = get(day);
        QCOMPARE(away.status, 503);
        QVERIFY(away.body.contains("try again"));
        for (const QByteArray &secret : {QByteArray("secret77"), QByteArray("tamsora_reports"),
                                         m_database.socketPath().toUtf8(), QByteArray("SQL")})
            QVERIFY2(!away.body.contains(secret), secret);
        m_database.start();
        for (int i = 0; i < 8; ++i) // each thread finds its own connection gone
            QCOMPARE(get(day).status, 200);
    }

    // Every page in frames of a phone's and a desk's width, in a browser; none is wider than its frame.
    void fitsSmallScreens()
    {
        const QString chromium = QStandardPaths::findExecutable(u"chromium"_s);
        QVERIFY2(!chromium.isEmpty(), "There is no chromium to look at the pages with");
        const QString wide = u"<p style=width:2000px>wide</p>"_s;
        QStringList pages{wide};
        for (const QString &path :
             {day, day + u"&period=month"_s, u"/report/counter.asp?counter=1&period=week"_s,
              u"/report/counter.asp?counter=1&date=2026-11-14"_s, u"/"_s, u"/report/booking.asp?date=x"_s})
            pages << QString::fromUtf8(get(path).body);
        QFile frames(m_folder.filePath(u"frames.html"_s));
        QVERIFY(frames.open(QIODevice::WriteOnly));
        frames.write(framesOf(pages).toUtf8());
        frames.close();
        QProcess browser;
        browser.start(chromium, {u"--headless"_s, u"--no-sandbox"_s, u"--disable-gpu"_s, u"--dump-dom"_s,
                                 u"--user-data-dir="_s + m_folder.filePath(u"browser"_s), u"--window-size=1300,900"_s,
                                 u"--virtual-time-budget=5000"_s, u"file://"_s + frames.fileName()});
        QVERIFY(browser.waitForFinished(120'000));
        const QString dom = QString::fromUtf8(browser.readAllStandardOutput());
        const QString widths = dom.section(u"<output>"_s, 1).section(u"</output>"_s, 0, 0);
        // Without the scroll bar; the check itself is known to find a page that is too wide.
        QCOMPARE(widths, u"2000 2000 "_s + u"360 1280 "_s.repeated(int(pages.size()) - 1));
    }

private:
    [[nodiscard]] QByteArray settingsText() const
    {
        QByteArray text = "[System]\nhour_start=8\nhour_end=2\nfields=9\ndatabase_user=tamsora_reports\n"
                          "database_password=secret77\ndatabase_server=" +
                          m_database.socketPath().toUtf8() + "\n";
        for (int field = 0; field < 9; ++field)
            text += "pitch" + QByteArray::number(field) + "=F" + QByteArray::number(field) + "\n";
        return text + "display6=Court &\n[Address]\naddress1=Larkmere <&> Co\n[Reports]\nport=0\n";
    }

    static QString shell(const QString &commands)
    {
        QProcess bash;
        bash.start(u"bash"_s, {u"-c"_s, u"source '" TAMSORA_DATABASE "/../setup/account.sh'; "_s + commands});
        bash.waitForFinished();
        return QString::fromUtf8(bash.readAllStandardOutput());
    }

    /// Each page in two frames, without a scroll bar's width, and a script that tells how wide they are.
    static QString framesOf(const QStringList &pages)
    {
        QString html = u"<!DOCTYPE html><meta charset=utf-8>"_s;
        for (const QString &page : pages)
            for (const int width : {360, 1280})
                html += u"<iframe style='width:%1px;height:30000px;border:0' srcdoc=\"%2\"></iframe>"_s.arg(
                    QString::number(width), page.toHtmlEscaped());
        return html + u"<output></output><script>onload = () => document.querySelector('output').textContent = "
                      "[...document.querySelectorAll('iframe')].map(f => (f.contentDocument.body.scrollWidth > "
                      "f.clientWidth ? f.contentDocument.body.scrollWidth : "
                      "f.contentDocument.documentElement.scrollWidth) + ' ').join('')</script>"_s;
    }

    [[nodiscard]] Answer get(const QString &path) const
    {
        return ask(u"GET %1 HTTP/1.1\r\nHost: localhost:%2"_s.arg(path, QString::number(m_port)));
    }

    [[nodiscard]] Answer ask(const QString &request) const
    {
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.1"_s, m_port);
        socket.waitForConnected();
        socket.write(request.toUtf8() + "\r\n\r\n");
        while (socket.waitForReadyRead(20'000)) {
        }
        const QByteArray all = socket.readAll();
        const qsizetype end = all.indexOf("\r\n\r\n");
        return {all.mid(9, 3).toInt(), all.left(end), all.mid(end + 4)};
    }

    PrivateServer m_database;
    QTemporaryDir m_folder;
    std::unique_ptr<ReportServer> m_server;
    quint16 m_port = 0;
    std::thread m_serving;
};

QTEST_GUILESS_MAIN(tst_Reports)
#include "tst_Reports.moc"
