#include "support/Story.h"

#include "app/Application.h"
#include "app/frm_AdminPass.h"
#include "plan/LayoutPlan.h"
#include "schedule/DayView.h"
#include "schedule/frm_Main.h"
#include "support/TestStation.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

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

/// Days at the counter on which all goes well.
class tst_StoriesOfADay : public Story
{
    Q_OBJECT

private Q_SLOTS:
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
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    tst_StoriesOfADay stories;
    return QTest::qExec(&stories, argc, argv);
}
#include "tst_StoriesOfADay.moc"
