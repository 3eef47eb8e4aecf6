#include "support/Story.h"

#include "app/Application.h"
#include "booking/Booking.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QAbstractButton>
#include <QTableView>

using namespace Qt::StringLiterals;

/// Days at the counter on which the settings, the server, another counter or a name stand in the way.
class tst_StoriesOfFaults : public Story
{
    Q_OBJECT

private Q_SLOTS:
    void startUpErrors_data()
    {
        drawnRows(uR"(
            garbage            | hour_start | garbage
            no number          | hour_end   | eleven
            no such counter    | counter    | 4
        )"_s);
    }

    void startUpErrors()
    {
        const auto row = cells<2>();
        const QByteArray garbage = QByteArray("\0\x80[System\xC3]\n=\xFF\r;\"", 17).repeated(250);
        writeSettings(row[1] == u"garbage" ? garbage : centre(m_server, {{row[0], row[1]}}));
        Program program;
        expect(u"no start"_s, [&program] { return program.start() ? u"start"_s : u"no start"_s; });
        d->awaitWindow(u"frm_ErrorDisplay"_s);
        d->step(u"what is wrong and where"_s, [=, this] {
            const QString text = textOf(u"txt_Error"_s);
            for (const QString &word : {u"[System]"_s, u'"' + row[0] + u'"', m_config.filePath(u"tamsora.ini"_s)})
                QVERIFY2(text.contains(word), qPrintable(text));
        });
        play(u"error Error while loading form | errors 1"_s);
        QVERIFY(!program.loginWindow());
    }

    void serverGoneAtLogin()
    {
        book(u"16:00"_s, 0, u"Team A"_s);
        start();
        script(u"type txtLogin anna | type txtPassword secret1 | server goes | click btn_GO | "
               "error Database server cannot be found when trying to login to the system | server comes"_s);
        d->step(u"the server goes between login and main window"_s, [this] {
            WindowDriver::control<QAbstractButton>(u"btn_GO"_s)->click();
            m_server.kill();
        });
        script(u"error Error while loading form"_s);
        expect(u"19"_s, [] { return QString::number(WindowDriver::control<QTableView>(grid)->model()->rowCount()); });
        play(u"see lbl_Unread This day could not be read: the rows below are not known to be free. | server comes | "
             "click btn_Refresh | see lbl_Unread - | grid 16:00 Team A | errors 2"_s);
    }

    // A backslash is sent as it stands: within a name the server takes it for itself, at the end it breaks the
    // statement.
    void namesAsTyped()
    {
        const QStringList names{u"O'Neil \"x\""_s,       u"AC\\DC"_s,       u"%1 %2 %s"_s,     u"<b>bold</b> &amp;"_s,
                                u"😀🏳️‍🌈"_s, u"مركز الرياضة"_s, QString(255, u'W')};
        start();
        script(logIn + court);
        QStringList shown;
        for (const QString &name : names) {
            const QString hour = QString::number(15 + shown.size()) + u":00"_s;
            script(u"select "_s + hour + u" | click btn_Book | verify anna secret1"_s);
            d->type(u"txt_BookerName"_s, name);
            script(u"click cmd_OK | closed frm_Booker"_s);
            shown << hour + u' ' + QString(name).remove(u'\\');
        }
        script(u"select 23:00 | click btn_Book | verify anna secret1 | type txt_BookerName Team \\ | click cmd_OK | "
               "error Error while loading form | click cmd_Cancel | closed frm_Booker | errors 1"_s);
        expect(shown.join(u", "_s), &shownBookings);
        play();
        QCOMPARE(m_server.rows(u"SELECT b_bookername FROM tbl_booking"_s).size(), names.size());
        QCOMPARE(m_server.rows(u"SELECT m_remark FROM tbl_remark"_s).size(), names.size());
    }

    void twoCountersRace()
    {
        start();
        script(logIn + u" | select 16:00 | click btn_Book | verify anna secret1 | type txt_BookerName Loser"_s);
        d->step(u"the other counter"_s, [this] {
            TestStation other(m_server, {}, 2);
            QCOMPARE(doBooking(other, u"ben"_s, {{u"2026-11-14"_s, u"16:00"_s, 0}, {u"Winner"_s}}),
                     BookingOutcome::Booked);
        });
        play(
            u"click cmd_OK | answer The field already being booked | closed frm_Booker | grid 16:00 Winner | errors 0"_s);
        QCOMPARE(bookings(), u"16:00|0|Winner|, 16:00|1|Shared Booking|, 16:00|2|Shared Booking|"_s);
    }

    void serverGoneInTheMiddle()
    {
        book(u"16:00"_s, 6, u"Team A"_s);
        start();
        play(logIn + court +
             u" | select 16:00 | click btn_Clear | verify anna secret1 | type txt_Answer rain | server goes | "
             "enter txt_Answer | error Error while loading form | grid  | "
             "see lbl_Unread This day could not be read: the rows below are not known to be free. | errors 1 | "
             "server comes | click btn_Refresh | see lbl_Unread - | grid 16:00 Team A | key Ctrl+C | "
             "server goes | key Ctrl+C | error Error while accessing database | errors 2 | server comes | key Ctrl+C | "
             "server goes | key Ctrl+V | error Error while accessing database | errors 3 | server comes | "
             "click btn_Refresh | select 18:00 | key Ctrl+V | server restarts | verify anna secret1 | "
             "grid 16:00 Team A, 18:00 Team A | server cuts | select 19:00 | key Ctrl+V | server cuts | "
             "verify anna secret1 | grid 16:00 Team A, 18:00 Team A, 19:00 Team A | errors 3 | select 20:00 | "
             "click btn_Book | verify anna secret1 | type txt_BookerName Team B | server goes | click cmd_OK | "
             "error Error while loading form | server comes | click cmd_OK | closed frm_Booker | errors 4 | "
             "grid 16:00 Team A, 18:00 Team A, 19:00 Team A, 20:00 Team B"_s);
    }
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    tst_StoriesOfFaults stories;
    return QTest::qExec(&stories, argc, argv);
}
#include "tst_StoriesOfFaults.moc"
