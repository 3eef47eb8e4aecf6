#include "support/Story.h"

#include "app/frm_AdminPass.h"
#include "schedule/DayView.h"
#include "schedule/frm_Main.h"
#include "support/TestStation.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTableView>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;

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
        script(u"see txtLogin OR11 | type txtLogin  an na  | type txtPassword sec.ret1' | enter txtPassword | "
               "closed frm_Login | see lbl_Counter Counter 1\r\nanna | select 16:00 | click btn_Book | type txt_user "
               "Anna | "
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
             "see frm_Booker Booking Field 7 from 16:00 to 17:00 | click cmd_OK | answer Please enter booker's name! | "
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

    void clearTakeAndPaste()
    {
        book(u"16:00"_s, 6, u"Team A"_s);
        book(u"17:00"_s, 6, u"Team A"_s);
        m_server.exec(u"INSERT INTO tbl_waitlist SET w_id=7, w_datetime='2026-11-14 17:00:00', w_field=6, "
                      "w_bookername='Nora & Co', w_bookertel='331', w_specialrate='student'"_s);
        start();
        script(logIn + court +
               u" | select 16:00 17:00 | click btn_Clear | verify anna secret1 | type txt_Answer rain, said O'Neil | "
               "enter txt_Answer | closed frm_AskText | grid "_s);
        d->step(u"the selection stays"_s, [] {
            QCOMPARE(WindowDriver::control<DayView>(grid)->selectedRowNumbers(), (std::vector<int>{8, 9}));
        });
        script(u"see lbl_Waiting_7 17:00 is free now. Waiting: Nora & Co, tel. 331"_s);
        d->step(u"the tip"_s, [] {
            QString tip = WindowDriver::control<QWidget>(u"lbl_Waiting_7"_s)->toolTip();
            if (Qt::mightBeRichText(tip)) {
                QTextDocument shown;
                shown.setHtml(tip);
                tip = shown.toPlainText();
            }
            QCOMPARE(tip, u"17:00 is free now. Waiting: Nora & Co, tel. 331"_s);
        });
        script(u"click btn_TakeWaiting_7"_s);
        d->step(u"on the clipboard"_s, [] {
            for (const QString &word : {u"Nora"_s, u"tudent"_s, u"waiting list"_s, u"17:00"_s})
                QVERIFY2(textOf(u"lbl_Clipboard"_s).contains(word), qPrintable(textOf(u"lbl_Clipboard"_s)));
        });
        play(u"key Ctrl+V | verify boss secret2 | grid 16:00 Nora & Co, 17:00 Nora & Co | errors 0"_s);
        QCOMPARE(rows(u"SELECT w_id FROM tbl_waitlist"_s), QString());
        QCOMPARE(rows(u"SELECT m_remark, m_job, m_staff FROM tbl_remark WHERE m_datetime LIKE '%17:00:00'"_s),
                 u"rain, said O'Neil|cancel|anna,  Nora & Co 331|book|boss"_s);
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

    void enterAndRates()
    {
        m_server.exec(u"INSERT INTO tbl_specialgroup2 SET m_idno='G200008', m_name='Gina'"_s);
        start();
        script(logIn + court +
               u" | select 16:00 | click btn_Book | verify anna secret1 | "
               "enter txt_SpecialGroupID_2 | see txt_BookerName  | type txt_BookerMemberID M100007 | "
               "see lbl_RateType member rate | type txt_BookerMemberID  | see lbl_RateType normal rate | "
               "type txt_BookerMemberID M1 | see lbl_RateType member rate | enter txt_BookerMemberID | "
               "type txt_SpecialGroupID_2 G2 | enter txt_SpecialGroupID_2 | "
               "see lbl_LookedUp_SpecialGroupID_2 Too short: at least 7 characters | see txt_BookerName Maria M. | "
               "type txt_SpecialGroupID_2  | enter txt_SpecialGroupID_2 | closed frm_Booker | "
               "select 17:00 | click btn_Book | verify anna secret1 | type txt_SpecialGroupID_2 G200008 | "
               "enter txt_SpecialGroupID_2 | closed frm_Booker | grid 16:00 Maria M., 17:00 Gina | errors 0"_s);
        play();
        // Whoever is found in a group has the first group's rate, for which the first group's box must hold a number.
        QCOMPARE(bookings(), u"16:00|6|Maria M.|member, 17:00|6|Gina|"_s);
    }

    void alertsOfTheHour()
    {
        book(u"15:00"_s, 2, u"Team A"_s);
        book(u"16:00"_s, 2, u"Team B"_s);
        book(u"15:00"_s, 3, u"Team C"_s);
        book(u"16:00"_s, 3, u"Team C"_s);
        start();
        script(logIn + u" | tick 15:20:00 | see lbl_Alert_2 -"_s);
        d->step(u"a click on the clock"_s, [this] { m_server.startLog(); });
        script(u"click txt_Time"_s);
        expect(u"18 of 18"_s, [this] {
            const QStringList log = m_server.takeLog();
            const auto looks = log.filter(u"SELECT * from tbl_booking where b_datetime="_s).size();
            return QString::number(looks) + u" of "_s + QString::number(log.size());
        });
        script(u"tick 15:20:02 | see lbl_Alert_2 Alert | tick 16:02:00 | tick 15:54:58 | see lbl_Alert_2 -"_s);
        d->step(u"a booking elsewhere"_s, [this] {
            book(u"20:00"_s, 0, u"Elsewhere"_s);
            m_server.startLog();
        });
        script(u"tick 15:55:00 | see lbl_Alert_2 Alert | see lbl_Alert_3 - | tick 15:55:01 | see lbl_Alert_2 - | "
               "tick 15:55:02 | see lbl_Alert_2 Alert | tick 16:01:58 | see lbl_Alert_2 Alert | grid 20:00 Elsewhere | "
               "tick 16:02:00 | see lbl_Alert_2 - | see txt_Time 14 Nov 04:02:00 PM"_s);
        // The rounds of minute 55 and of the full hour.
        expect(u"2"_s, [this] { return QString::number(m_server.takeLog().filter(u"b_paid,b_extratime"_s).size()); });
        // A round that fails opens no window and is tried again each second of its minute.
        script(u"tick 16:30:00 | server goes | tick 16:55:00 | tick 16:55:01 | see txt_Time 14 Nov 04:55:01 PM | "
               "see lbl_Alert_2 - | click btn_Refresh | see frm_ErrorDisplay Tamsora: an error | tick 16:55:02"_s);
        d->step(u"the server comes with new bookings"_s, [this] {
            m_server.start();
            book(u"16:00"_s, 7, u"Team D"_s);
        });
        play(u"tick 16:55:04 | behind lbl_Alert_7 Alert | error Error while accessing database | see lbl_Alert_2 Alert "
             "| tick 17:00:00 | tick 17:02:00 | see lbl_Alert_7 - | server goes | tick 17:55:58 | tick 18:00:00 | "
             "server comes | "
             "tick 18:00:02 | see lbl_Alert_2 - | errors 1"_s);
    }

    void counterAndShift()
    {
        m_server.exec(u"INSERT INTO tbl_system SET sys_counter=2, sys_counterstaff='ben'"_s);
        TestStation station(m_server);
        station.settings.CounterCount = 3;
        QStringList seen;
        for (const QString &time : {u"08:00:00"_s, u"09:00:00"_s, u"17:59:59"_s, u"18:00:00"_s}) {
            station.setNow(u"2026-11-14 "_s + time);
            frm_Main window(station);
            window.load();
            auto *counter = window.findChild<QAbstractButton *>(u"lbl_Counter"_s);
            // A counter that cannot be read is not shown, and not passed over.
            m_server.exec(u"RENAME TABLE tbl_system TO tbl_away"_s);
            const QString before = counter->text();
            station.person.expect({u"error: Error while accessing database"_s});
            counter->click();
            QCOMPARE(counter->text(), before);
            m_server.exec(u"RENAME TABLE tbl_away TO tbl_system"_s);
            for (qsizetype click = seen.size(); click >= 0; --click)
                counter->click();
            seen << station.shiftName + u' ' + counter->text();
        }
        QCOMPARE(seen, (QStringList{u"evening Counter 2\r\nben"_s, u"morning Counter 3\r\n"_s,
                                    u"morning Counter 1\r\n"_s, u"evening Counter 2\r\nben"_s}));
    }

    void lights()
    {
        start();
        script(logIn + u" | page 2 | plan LayoutPlan2 6 | click LightSwitch_0 | click LightSwitch_3 | "
                       "click LightSwitch_4 | click LightSwitch_4"_s);
        for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
            expect(QString(), [this] { return rows(u"SELECT l_id FROM tbl_light"_s); });
            script(u"click btn_LightCommit | verify anna secret1"_s);
            d->answer(u"Confirm Light Status?"_s, answer);
            script(u"closed frm_Message"_s);
        }
        play();
        QCOMPARE(rows(u"SELECT l_field, l_staff, l_datetime, l_row0, l_row1, l_row2, l_row3, l_row4 FROM tbl_light"_s),
                 u"6|anna|2026-11-14 14:59:59|on|off|off|on|off"_s);
        script(u"count ListView_Light 1 | plan LayoutPlan2 3 | count ListView_Light 0 | "
               "see lbl_LightState Nothing was committed for this field yet. | plan LayoutPlan2 6 | "
               "count ListView_Light 1 | server goes | plan LayoutPlan2 3 | error Error while accessing database | "
               "see lbl_LightField pitch3 | see lbl_LightState The light log of this field could not be read. | "
               "count ListView_Light 0"_s);
        const auto says = [this](const QString &state) {
            expect(state, [] {
                return WindowDriver::control<QWidget>(u"LayoutPlan2"_s)->accessibleDescription().section(u'.', 0, 0);
            });
        };
        d->step(u"a booking of the next hour"_s, [this] {
            m_server.start();
            book(u"15:00"_s, 3, u"Team A"_s);
        });
        script(u"plan LayoutPlan2 3"_s);
        says(u"pitch3: Free"_s);
        script(u"tick 15:00:00"_s);
        says(u"pitch3: Booked, Team A"_s);
        play(u"errors 1"_s);
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
        play(u"select 16:00 | click mnu_History | answer History of pitch0, 16:00\n\n13 Nov 01:02:03 PM: anna book "
             "<i>A</i> 55 | select 17:00 | click mnu_History | answer History of pitch0, 17:00\n\n"
             "Nothing was done to this hour yet. | errors 0"_s);
    }
};

STORY_MAIN(tst_StoriesOfADay)
#include "tst_StoriesOfADay.moc"
