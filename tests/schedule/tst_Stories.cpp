#include "Program.h"
#include "WindowDriver.h"
#include "app/Application.h"
#include "app/frm_AdminPass.h"
#include "booking/Booking.h"
#include "plan/LayoutPlan.h"
#include "schedule/DayModel.h"
#include "schedule/DayView.h"
#include "schedule/frm_Main.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QAbstractButton>
#include <QFile>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString grid = u"ListView_Book"_s;
const QString logIn =
    u"type txtLogin anna | type txtPassword secret1 | click btn_GO | closed frm_Login | clock by hand"_s;
const QString court = u" | key R"_s; // chooses field 6, which shares its ground with no other

// The settings of a centre with nine fields; no names, no hot spots: those are the fields' numbers.
QByteArray centre(const PrivateServer &server, const QMap<QString, QString> &changed = {})
{
    QMap<QString, QString> system{{u"fields"_s, u"9"_s},
                                  {u"counters"_s, u"3"_s},
                                  {u"hour_start"_s, u"8"_s},
                                  {u"hour_end"_s, u"2"_s},
                                  {u"database_user"_s, u"counter"_s},
                                  {u"database_server"_s, server.socketPath()}};
    QString spots;
    for (int field = 0; field < 9; ++field) {
        system[u"pitch"_s + QString::number(field)] = u"F"_s + QString::number(field);
        spots += u"Coord%1=%1, 0, %1.9, 1\n"_s.arg(QString::number(field));
    }
    system.insert(changed);
    QString text = u"[System]\n"_s;
    for (auto key = system.cbegin(); key != system.cend(); ++key)
        text += key.key() + u'=' + key.value() + u'\n';
    return (text + u"[Shared]\nShared0=0&1\nShared1=0&2\n[HotSpot]\n"_s + spots).toUtf8();
}

int rowOf(const QString &hour)
{
    return rowOfClockHour({8, 2}, hour.left(2).toInt() % 24);
}

// What the grid shows: "16:00 Team A, 24:00 Team B".
QString shownBookings()
{
    const auto *model = WindowDriver::control<QTableView>(grid)->model();
    QStringList lines;
    for (int row = 0; row < model->rowCount(); ++row)
        if (const QString booker = model->index(row, DayModel::BookerName).data().toString(); !booker.isEmpty())
            lines << model->index(row, DayModel::HourRange).data().toString().left(5) + u' ' + booker;
    return lines.join(u", "_s);
}

// What a control says, or a window's title; "-" when there is no such control to be seen.
QString textOf(const QString &name)
{
    const QObject *control = WindowDriver::find(name);
    for (const char *property : {"plainText", "text", "windowTitle"})
        if (control && control->property(property).isValid())
            return control->property(property).toString();
    return u"-"_s;
}

// The controls of a window that Tab does not come to.
QString notReachedByTab(QWidget *window)
{
    QSet<const QWidget *> left;
    const auto widgets = window->findChildren<QWidget *>();
    for (const QWidget *widget : widgets)
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
            !widget->focusProxy() && widget->window() == window)
            left << widget;
    for (qsizetype press = 3 * left.size(); press > 0 && window->focusWidget(); --press) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        left.remove(window->focusWidget());
    }
    QStringList names;
    for (const QWidget *widget : left)
        names << widget->parentWidget()->objectName() + u'/' + widget->objectName();
    return names.join(u' ');
}

} // namespace

/// Days at the counter in the real windows, on 14 November 2026, from 14:59:59.
class tst_Stories : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", m_config.path().toUtf8());
        qApp->installEventFilter(this);
        QApplication::setQuitOnLastWindowClosed(false);
    }

    void init()
    {
        m_server.freshDatabase();
        m_server.exec(u"INSERT INTO tbl_staff (st_login, st_password, st_access) VALUES "
                      "('anna','secret1',0), ('boss','secret2',1);"
                      "INSERT INTO tbl_system SET sys_counter=1, sys_doclose=1;"
                      "INSERT INTO tbl_member SET m_idno='M100007', m_name='Maria M.', m_org='Rovers', m_tel='777'"_s);
        writeSettings(centre(m_server));
        m_now = QDateTime({2026, 11, 14}, {14, 59, 59});
        m_errors = 0;
        d = std::make_unique<WindowDriver>();
    }

    void cleanup()
    {
        d.reset();
        m_program.reset();
        if (QTest::currentTestFailed())
            server(u"restarts"_s);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void loggingIn()
    {
        start();
        const QStringList wrong{u"anna secret2"_s, u"'OR''=' ' OR ''='"_s, u"\\'OR/**/1=1--  x"_s};
        for (const QString &pair : wrong)
            script(u"type txtLogin %1 | type txtPassword %2 | click btn_GO | answer Login/Password not correct"_s.arg(
                pair.section(u' ', 0, 0), pair.section(u' ', 1)));
        script(
            u"see txtLogin OR11 | type txtLogin  an na  | type txtPassword sec.ret1' | enter txtPassword | "
            "closed frm_Login | see lbl_Counter Counter 1\nanna | select 16:00 | click btn_Book | type txt_user Anna | "
            "type txt_password secret1 | click btn_Go | answer Invalid Password, try again! | click btn_Cancel | "
            "closed frm_VerifyUser"_s);
        frm_AdminPass admin(*m_program->station());
        const auto asAdministrator = [&](const QString &login, const QString &password, const QString &verdict) {
            expect(verdict, [&admin, login, password] {
                admin.findChild<QLineEdit *>(u"txtLogin"_s)->setText(login);
                admin.findChild<QLineEdit *>(u"txtPassword"_s)->setText(password);
                return admin.GetAdminPass() ? u"in"_s : u"out"_s;
            });
            script(verdict == u"out" ? u"answer Login/Password not correct"_s : QString());
        };
        asAdministrator(u"anna"_s, u"secret1"_s, u"out"_s);
        asAdministrator(u"boss"_s, u"secret2"_s, u"in"_s);
        play(u"errors 0"_s);
        QCOMPARE(rows(u"SELECT log_counter, log_staffname, log_datetime, log_do FROM tbl_log"_s),
                 u"1|anna|2026-11-14 14:59:59|logging in"_s);
        QCOMPARE(rows(u"SELECT sys_counter, sys_counterstaff, sys_doclose FROM tbl_system ORDER BY 1"_s),
                 u"1|anna|0, 2||0, 3||0"_s);
        QCOMPARE(rows(u"SELECT st_lastlogin FROM tbl_staff ORDER BY st_login"_s), u"2026-11-14 14:59:59, NULL"_s);
    }

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

    void bookingForAMember()
    {
        start();
        play(logIn + court +
             u" | select 16:00 24:00 | click btn_Book | verify anna secret1 | "
             "see frm_Booker Booking Field 6 from 16:00 to 17:00 | click cmd_OK | answer Please enter booker's name! | "
             "type txt_BookerMemberID M10000 | see txt_BookerName  | type txt_BookerMemberID M100007 | "
             "see txt_BookerName Maria M. | see txt_BookerTel 777 | click cmd_OK | closed frm_Booker | "
             "grid 16:00 Maria M., 24:00 Maria M. | select 14:00 | click btn_Book | verify anna secret1 | "
             "type txt_BookerMemberID M100007 | type txt_BookerMemberID  | click cmd_OK | closed frm_Booker | "
             "select 14:00 15:00 | click btn_Book | answer The field already being booked | "
             "select 13:00 14:00 | click btn_Book | answer You cannot book previous entry"_s);
        QCOMPARE(bookings(), u"16:00|6|Maria M.|member, 24:00|6|Maria M.|member, 14:00|6|Maria M.|"_s);
        QCOMPARE(rows(u"SELECT m_remark, m_job, m_staff, m_actiontime FROM tbl_remark LIMIT 1"_s),
                 u" Maria M. 777|book|anna|14 Nov 02:59:59 PM"_s);
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
            QCOMPARE(doBooking(other, other.clipboard, u"ben"_s, {u"2026-11-14"_s, u"16:00"_s, {}, {}, u"Winner"_s, 0}),
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

    void keys()
    {
        writeSettings(centre(m_server, {{u"pitch7"_s, QString()}}));
        start();
        script(logIn +
               u" | key O | field 1 | key I | field 2 | key U | field 3 | key Y | field 4 | key T | field 5 | "
               "key R | field 6 | key E | field 6 | key W | field 6 | key Shift+O | field 6 | key P | field 0 | "
               "key Alt+F | page 4 | key O | key Ctrl+V | key F1"_s);
        const auto page = [this] { return QString::number(part<QTabWidget>(u"SSTab1"_s)->currentIndex()); };
        expect(u"1"_s, page);
        script(u"key O | field 0 | page 0 | key F16"_s);
        expect(u"1"_s, page);
        expect(u"logging in"_s, [this] { return rows(u"SELECT log_do FROM tbl_log"_s); });
        script(u"key Alt+F"_s);
        d->await(u"the end"_s, [] { return false; });
        QVERIFY(!d->run());
        QCOMPARE(d->failure(), u"the program ended before: the end"_s);
        QCOMPARE(rows(u"SELECT log_staffname, log_do FROM tbl_log ORDER BY log_id"_s),
                 u"anna|logging in, anna|log out"_s);
    }

    void clearTakeAndPaste()
    {
        book(u"16:00"_s, 6, u"Team A"_s);
        book(u"17:00"_s, 6, u"Team A"_s);
        m_server.exec(u"INSERT INTO tbl_waitlist SET w_id=7, w_datetime='2026-11-14 17:00:00', w_field=6, "
                      "w_bookername='Nora', w_bookertel='331', w_specialrate='student'"_s);
        start();
        script(logIn + court +
               u" | select 16:00 17:00 | click btn_Clear | verify anna secret1 | type txt_Answer rain, said O'Neil | "
               "enter txt_Answer | closed frm_AskText | grid "_s);
        d->step(u"the selection stays"_s, [] {
            QCOMPARE(WindowDriver::control<DayView>(grid)->selectedRowNumbers(), (std::vector<int>{8, 9}));
        });
        script(u"see lbl_Waiting_7 17:00 is free now. Waiting: Nora, tel. 331 | click btn_TakeWaiting_7"_s);
        d->step(u"on the clipboard"_s, [] {
            for (const QString &word : {u"Nora"_s, u"tudent"_s, u"waiting list"_s, u"17:00"_s})
                QVERIFY2(textOf(u"lbl_Clipboard"_s).contains(word), qPrintable(textOf(u"lbl_Clipboard"_s)));
        });
        play(u"key Ctrl+V | verify boss secret2 | grid 16:00 Nora, 17:00 Nora | errors 0"_s);
        QCOMPARE(rows(u"SELECT w_id FROM tbl_waitlist"_s), QString());
        QCOMPARE(rows(u"SELECT m_remark, m_job, m_staff FROM tbl_remark WHERE m_datetime LIKE '%17:00:00'"_s),
                 u"rain, said O'Neil|cancel|anna,  Nora 331|book|boss"_s);
    }

    void blockBooking()
    {
        book(u"16:00"_s, 6, u"Team A"_s);
        m_server.exec(
            u"INSERT INTO tbl_booking SET b_datetime='2026-11-28 24:00:00', b_field=6, b_bookername='Other'"_s);
        start();
        script(logIn + court +
               u" | select 16:00 | click mnu_Copy | select 20:00 24:00 | click mnu_BlockBook1 | "
               "verify anna secret1 | see lbl_Counts 7 of 8 hours booked, 1 refused"_s);
        expect(u"20 Booked, 24 Booked, 20 Booked, 24 Booked, 20 Booked, 24 The field already being booked, "
               "20 Booked, 24 Booked"_s,
               [] {
                   const auto *model = WindowDriver::control<QTableView>(u"ListView_BlockBooking"_s)->model();
                   QStringList hours;
                   for (int row = 0; row < model->rowCount(); ++row)
                       hours << model->index(row, 1).data().toString().left(3) + model->index(row, 2).data().toString();
                   return hours.replaceInStrings(u":"_s, u" "_s).join(u", "_s);
               });
        play(u"click btn_Close | closed frm_BlockBookingResult | grid 16:00 Team A, 20:00 Team A, 24:00 Team A"_s);
        QCOMPARE(rows(u"SELECT MID(b_datetime, 6, 5) FROM tbl_booking WHERE b_datetime LIKE '%20:00:00' ORDER BY 1"_s),
                 u"11-14, 11-21, 11-28, 12-05"_s);
    }

    void alertsOfTheHour()
    {
        book(u"15:00"_s, 2, u"Team A"_s);
        book(u"16:00"_s, 2, u"Team B"_s);
        book(u"15:00"_s, 3, u"Team C"_s);
        book(u"16:00"_s, 3, u"Team C"_s);
        start();
        script(logIn + u" | tick 15:54:58 | see lbl_Alert_2 -"_s);
        d->step(u"a booking elsewhere"_s, [this] {
            book(u"20:00"_s, 0, u"Elsewhere"_s);
            m_server.startLog();
        });
        script(u"tick 15:55:00 | see lbl_Alert_2 Alert | see lbl_Alert_3 - | tick 15:55:01 | see lbl_Alert_2 - | "
               "tick 15:55:02 | see lbl_Alert_2 Alert | tick 16:01:58 | see lbl_Alert_2 Alert | grid 20:00 Elsewhere | "
               "tick 16:02:00 | see lbl_Alert_2 - | see txt_Time 14 Nov 04:02:00 PM"_s);
        expect(u"1"_s, [this] { return QString::number(m_server.takeLog().filter(u"b_datetime LIKE"_s).size()); });
        // The clock does not run into itself behind its own error, and adds no second one to another's.
        play(u"tick 16:30:00 | server goes | tick 16:55:00 | see frm_ErrorDisplay Tamsora: an error | tick 16:55:01 | "
             "behind txt_Time 14 Nov 04:55:00 PM | error Error while accessing database | click btn_Refresh | see "
             "frm_ErrorDisplay Tamsora: an error | "
             "tick 17:30:00 | tick 17:55:00 | error Error while accessing database | errors 2 | server comes"_s);
    }

    void counterAndShift()
    {
        m_server.exec(u"INSERT INTO tbl_system SET sys_counter=2, sys_counterstaff='ben'"_s);
        TestStation station(m_server);
        station.settings.CounterCount = 3;
        QStringList shifts;
        QStringList counters;
        for (const QString &time : {u"08:00:00"_s, u"09:00:00"_s, u"17:59:59"_s, u"18:00:00"_s}) {
            station.setNow(u"2026-11-14 "_s + time);
            frm_Main window(station);
            window.load();
            shifts << window.shiftName();
            auto *counter = window.findChild<QAbstractButton *>(u"lbl_Counter"_s);
            for (qsizetype click = shifts.size(); click > 0; --click)
                counter->click();
            counters << counter->text();
        }
        QCOMPARE(shifts.join(u' '), u"evening morning morning evening"_s);
        QCOMPARE(counters, (QStringList{u"Counter 2\nben"_s, u"Counter 3\n"_s, u"Counter 1\n"_s, u"Counter 2\nben"_s}));
    }

    void lights()
    {
        start();
        script(logIn + u" | page 2"_s);
        d->clickAt(u"LayoutPlan2"_s,
                   [](QWidget *plan) { return qobject_cast<LayoutPlan *>(plan)->fieldRect(6).center().toPoint(); });
        script(u"click LightSwitch_0 | click LightSwitch_3 | click LightSwitch_4 | click LightSwitch_4"_s);
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
            expect(QString(), [this] { return rows(u"SELECT l_id FROM tbl_light"_s); });
            script(u"click btn_LightCommit | verify anna secret1"_s);
            d->answer(u"Confirm Light Status?"_s, answer);
            script(u"closed frm_Message"_s);
        }
        play();
        QCOMPARE(rows(u"SELECT l_field, l_staff, l_datetime, l_row0, l_row1, l_row2, l_row3, l_row4 FROM tbl_light"_s),
                 u"6|anna|2026-11-14 14:59:59|on|off|off|on|off"_s);
    }

    void historyOfASlot()
    {
        m_server.exec(
            u"INSERT INTO tbl_remark SET m_datetime='2026-11-14 16:00:00', m_field=0, m_remark=' <i>A</i> 55', "
            "m_job='book', m_staff='anna', m_actiontime='13 Nov 01:02:03 PM'"_s);
        start();
        script(logIn);
        const auto readings = [this](const QStringList &hours, const QString &count) {
            expect(count, [=, this] {
                m_server.startLog();
                for (const QString &hour : hours)
                    hover(hour);
                return QString::number(m_server.takeLog().filter(u"tbl_remark where"_s).size());
            });
        };
        readings({u"16:00"_s, u"16:00"_s, u"17:00"_s, u"17:00"_s, u"16:00"_s}, u"2"_s);
        script(u"click btn_Refresh"_s);
        readings({u"16:00"_s}, u"1"_s);
        d->step(u"the tip"_s, [] {
            const QString line = u"13 Nov 01:02:03 PM: anna book &lt;i&gt;A&lt;/i&gt; 55"_s;
            QVERIFY2(QToolTip::text().contains(line), qPrintable(QToolTip::text()));
        });
        play();
    }

    void questions()
    {
        QtPrompts prompts;
        const Question close{u"Close it?"_s, u"Till"_s, MessageIcon::Warning, {Answer::Ok, Answer::Cancel}, Answer::Ok};
        const auto ask = [&](const Question &question, Answer wanted) {
            expect(QString::number(int(wanted)), [&, question] { return QString::number(int(prompts.ask(question))); });
        };
        ask(close, Answer::Ok);
        d->step(u"its face"_s, [] {
            const auto *box = WindowDriver::control<QMessageBox>(u"frm_Message"_s);
            QCOMPARE(box->windowTitle(), u"Till"_s);
            QCOMPARE(box->icon(), QMessageBox::Warning);
            QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
        });
        script(u"enter frm_Message"_s);
        ask(close, Answer::Cancel);
        d->pressKey(u"frm_Message"_s, Qt::Key_Escape);
        ask({u"Delete?"_s, {}}, Answer::No);
        script(u"enter frm_Message"_s);
        ask({u"Delete?"_s, {}}, Answer::Yes);
        d->answer(u"Delete?"_s, QMessageBox::Yes);
        expect(u"12"_s, [&] { return prompts.askText(u"Number"_s, 9, u"Print Receipt"_s); });
        play(u"see frm_AskText Print Receipt | type txt_Answer 12 | enter txt_Answer"_s);
    }

    void tabReachesEverything()
    {
        start();
        const auto walk = [this](const QString &steps, const QString &window) {
            script(steps);
            d->awaitWindow(window);
            expect(QString(), [window] { return notReachedByTab(WindowDriver::control<QWidget>(window)); });
        };
        walk(logIn, u"frm_Main"_s);
        walk(u"page 2"_s, u"frm_Main"_s);
        walk(u"page 4"_s, u"frm_Main"_s);
        walk(u"page 0 | select 16:00 | click btn_Book"_s, u"frm_VerifyUser"_s);
        walk(u"verify anna secret1"_s, u"frm_Booker"_s);
        walk(u"click cmd_Cancel | click btn_AddEntry | verify anna secret1"_s, u"frm_WaitingList"_s);
        play(u"click cmd_Cancel | closed frm_WaitingList"_s);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == u"frm_ErrorDisplay")
            ++m_errors;
        return false;
    }

private:
    void writeSettings(const QByteArray &text) const
    {
        QFile file(m_config.filePath(u"tamsora.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    void start()
    {
        m_program = std::make_unique<Program>([this] { return m_now; });
        QVERIFY(m_program->start());
    }

    /// Adds steps, separated by " | ", each a word and what it is about; see the words in perform().
    void script(const QString &steps)
    {
        const QStringList lines = steps.split(u" | "_s, Qt::SkipEmptyParts);
        for (const QString &line : lines)
            perform(line.section(u' ', 0, 0), line.section(u' ', 1));
    }

    void perform(const QString &word, const QString &about)
    {
        const QString first = about.section(u' ', 0, 0);
        const QString rest = about.section(u' ', 1);
        if (word == u"click")
            d->click(about);
        else if (word == u"closed")
            d->awaitClosed(about);
        else if (word == u"type")
            d->type(first, rest);
        else if (word == u"enter")
            d->pressKey(about, Qt::Key_Return);
        else if (word == u"key")
            d->step(about, [=, this] {
                const QKeyCombination key = QKeySequence(about)[0];
                QTest::keyClick(m_program->mainWindow(), key.key(), key.keyboardModifiers());
            });
        else if (word == u"page")
            d->step(about, [=, this] { part<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(about.toInt()); });
        else if (word == u"select") {
            std::vector<int> selected;
            for (const QString &hour : about.split(u' '))
                selected.push_back(rowOf(hour));
            d->selectRows(grid, selected);
        } else if (word == u"verify")
            script(
                u"type txt_user %1 | type txt_password %2 | click btn_Go | closed frm_VerifyUser"_s.arg(first, rest));
        else if (word == u"answer")
            d->answer(about);
        else if (word == u"error") // one error window with this message and none behind it
            script(u"see lbl_Error "_s + about + u" | click btn_Close | closed frm_ErrorDisplay"_s);
        else if (word == u"errors")
            expect(about, [this] { return QString::number(m_errors); });
        else if (word == u"see") {
            d->await(about, [=] { return rest == u"-" || WindowDriver::find(first); });
            expect(rest, [=] { return textOf(first); });
        } else if (word == u"grid")
            expect(about, &shownBookings);
        else if (word == u"behind") // a control of the main window that is hidden, or behind another window
            expect(rest, [=, this] { return part(first)->property("text").toString(); });
        else if (word == u"field")
            script(u"behind txtInfo_FieldSelect "_s + about);
        else if (word == u"tick")
            d->step(about, [=, this] {
                m_now.setTime(QTime::fromString(about, u"hh:mm:ss"_s));
                QMetaObject::invokeMethod(part<QTimer>(u"Clock"_s), "timeout");
            });
        else if (word == u"server")
            d->step(about, [=, this] { server(about); });
        else if (word == u"clock")
            d->step(about, [this] {
                m_program->mainWindow()->resize(1366, 768);
                part<QTimer>(u"Clock"_s)->stop();
            });
        else
            QFAIL(qPrintable(u"No such step: "_s + word));
    }

    void play() { QVERIFY2(d->run(), qPrintable(d->failure())); }
    void play(const QString &steps)
    {
        script(steps);
        play();
    }
    template <typename Ask>
    void expect(const QString &expected, Ask ask)
    {
        d->step(expected, [=] { QCOMPARE(QString(ask()), expected); });
    }
    void server(const QString &what)
    {
        if (what == u"cuts")
            m_server.cutConnections();
        else if (what != u"comes")
            m_server.kill();
        if (what == u"comes" || what == u"restarts")
            m_server.start();
    }

    void hover(const QString &hour)
    {
        auto *table = WindowDriver::control<QTableView>(grid);
        const QPoint point = table->visualRect(table->model()->index(rowOf(hour), DayModel::Paid)).center();
        QHelpEvent pointer(QEvent::ToolTip, point, table->viewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(table->viewport(), &pointer);
    }

    void book(const QString &hour, int field, const QString &name) const
    {
        m_server.exec(u"INSERT INTO tbl_booking SET b_datetime='2026-11-14 "_s + hour + u":00', b_field="_s +
                      QString::number(field) + u", b_bookername='"_s + name + u"'"_s);
    }
    [[nodiscard]] QString rows(const QString &sql) const { return m_server.rows(sql).join(u", "_s); }
    [[nodiscard]] QString bookings() const
    {
        return rows(u"SELECT MID(b_datetime, 12, 5), b_field, b_bookername, b_specialrate FROM tbl_booking "
                    "ORDER BY b_id"_s);
    }
    template <typename Control = QWidget>
    [[nodiscard]] Control *part(const QString &name) const
    {
        return m_program->mainWindow()->findChild<Control *>(name);
    }

    PrivateServer m_server;
    QTemporaryDir m_config;
    QDateTime m_now;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<WindowDriver> d;
    int m_errors = 0; ///< error windows shown in this story
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    tst_Stories stories;
    return QTest::qExec(&stories, argc, argv);
}
#include "tst_Stories.moc"
