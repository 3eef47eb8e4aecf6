#include "support/Story.h"

#include "app/frm_AdminPass.h"
#include "support/DrawnRows.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QLineEdit>
#include <QRegularExpression>

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
            field with itself  | Shared2    | 3&3
            no such field      | Shared2    | 0&9
            no such whole      | Shared2    | 9&0
            no field at all    | Shared2    | -1&0
        )"_s);
    }

    void startUpErrors()
    {
        const auto row = cells<2>();
        const QByteArray garbage = QByteArray("\0\x80[System\xC3]\n=\xFF\r;\"", 17).repeated(250);
        const bool isPair = row[0] == u"Shared2";
        const QByteArray wrong =
            isPair ? centre(m_server).replace("[HotSpot]", "Shared2=" + row[1].toUtf8() + "\n[HotSpot]")
                   : centre(m_server, {{row[0], row[1]}});
        writeSettings(row[1] == u"garbage" ? garbage : wrong);
        Program program;
        expect(u"no start"_s, [&program] { return program.start() ? u"start"_s : u"no start"_s; });
        d->awaitWindow(u"frm_ErrorDisplay"_s);
        d->step(u"what is wrong and where"_s, [=, this] {
            const QString text = textOf(u"txt_Error"_s);
            for (const QString &word :
                 {isPair ? u"[Shared]"_s : u"[System]"_s, u'"' + row[0] + u'"', m_config.filePath(u"tamsora.ini"_s)})
                QVERIFY2(text.contains(word), qPrintable(text));
        });
        play(u"error Error while loading form | errors 1"_s);
        QVERIFY(!program.loginWindow());
    }

    // One wrong setting of a picture: one window, and all else is there.
    void wrongPicture()
    {
        book(u"14:00"_s, 6, u"Team A"_s);
        int windows = 0;
        for (const char *section : {"TopHeader", "Layout", "WaitingList"}) {
            writeSettings(centre(m_server) + "[HotSpot2]\nCoord3=0, 0, 5, 5\n[" + section + "]\nTop=O\nLeft=l\n");
            m_now.setTime({14, 54, 59});
            start();
            script(u"type txtLogin anna | type txtPassword secret1 | click btn_GO | "
                   "error Error while loading form | clock by hand | field 0"_s);
            script(u"plan LayoutPlan1 6 | field 6 | see lbl_Counter Counter 1\r\nanna | tick 14:55:00 | "
                   "see lbl_Alert_6 Alert | page 2 | plan LayoutPlan2 5 | see lbl_LightField pitch5 | page 4 | "
                   "plan LayoutPlan3 3"_s);
            play(u"see lbl_WaitHeading Waiting for pitch3, Saturday 14 November 2026 | errors "_s +
                 QString::number(++windows));
            m_program.reset();
        }
    }

    // What the database refused at the start is there as soon as a day could be read.
    void serverGoneAtLogin()
    {
        book(u"16:00"_s, 0, u"Team A"_s);
        m_server.exec(u"CREATE TABLE IF NOT EXISTS tbl_specialgroup4 LIKE tbl_member;"
                      "INSERT INTO tbl_waitlist SET w_id=7, w_datetime='2026-11-14 17:00:00', w_field=0, "
                      "w_bookername='Nora'"_s);
        start();
        script(u"type txtLogin anna | type txtPassword secret1 | server goes | click btn_GO | "
               "error Database server cannot be found when trying to login to the system | server comes"_s);
        d->step(u"the server goes between login and main window"_s, [this] {
            WindowDriver::control<QAbstractButton>(u"btn_GO"_s)->click();
            m_server.kill();
        });
        const auto groups = [this] {
            return QString::number(m_program->mainWindow()->findChildren<QWidget *>(u"btn_MemberDynamic_4"_s).size());
        };
        script(u"error Error while loading form | clock by hand | see lbl_Counter  | count ListView_Book 19 | "
               "see lbl_Unread This day could not be read: the rows below are not known to be free."_s);
        expect(u"0"_s, groups);
        script(u"server comes"_s);
        d->step(u"as another counter left it"_s, [this] { m_server.exec(u"UPDATE tbl_system SET sys_doclose=1"_s); });
        script(u"click btn_Refresh | see lbl_Unread - | grid 16:00 Team A | see lbl_Counter Counter 1\r\nanna | "
               "click btn_Refresh | count ListView_Wait 1"_s);
        expect(u"1"_s, groups);
        expect(u"0"_s, [this] { return rows(u"SELECT sys_doclose FROM tbl_system WHERE sys_counter=1"_s); });
        play(u"errors 2"_s);
    }

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
               "closed frm_Booker | errors 0"_s);
        shown << u"23:00 Team "_s;
        expect(shown.join(u", "_s), &shownBookings);
        play();
        QCOMPARE(m_server.rows(u"SELECT b_bookername FROM tbl_booking"_s).size(), shown.size());
        QCOMPARE(m_server.rows(u"SELECT m_remark FROM tbl_remark"_s).size(), shown.size());
    }

    void namesThatAreMarks()
    {
        const QString refused = u" | answer This name marks shared ground or extra time, please enter another one!"_s;
        start();
        script(logIn + court + u" | select 16:00"_s);
        for (const QString &window : {u"btn_Book"_s, u"btn_AddEntry"_s}) {
            script(u"click "_s + window + u" | verify anna secret1"_s);
            for (const QString &name : {u"my SHARED booking"_s, u"Partially Shared 2"_s, u"Team \u02C6 A"_s})
                script(u"type txt_BookerName "_s + name + u" | click cmd_OK"_s + refused);
            script(u"type txt_BookerName Partially shaded | click cmd_OK"_s);
        }
        play(u"closed frm_WaitingList | grid 16:00 Partially shaded | errors 0"_s);
    }

    // Each entry box: what is typed and pasted into it comes without its backslashes, and a line says why.
    void noBackslash()
    {
        const auto refused = [this](const QString &boxes) {
            const QStringList names = boxes.split(u' ');
            for (const QString &name : names) {
                d->step(name, [name] {
                    auto *box = WindowDriver::control<QLineEdit>(name);
                    QTest::keyClicks(box, u"a\\b"_s);
                    QGuiApplication::clipboard()->setText(u"\\', b_paid=50 -- \\"_s);
                    box->setCursorPosition(1);
                    box->paste();
                    QTest::keyClicks(box, u"c"_s);
                    QCOMPARE(box->text(), u"a', b_paid=50 -- cb"_s);
                    QCOMPARE(textOf(u"lbl_NoBackslash"_s), u"-"_s);
                    QTest::keyClick(box, '\\');
                    QCOMPARE(box->text(), u"a', b_paid=50 -- cb"_s);
                    QVERIFY(textOf(u"lbl_NoBackslash"_s).contains(u"backslash"_s));
                    QTest::keyClick(box, Qt::Key_Left);
                    QCOMPARE(textOf(u"lbl_NoBackslash"_s), u"-"_s);
                });
            }
        };
        book(u"17:00"_s, 6, u"Team A"_s);
        start();
        refused(u"txtLogin txtPassword"_s);
        script(logIn + court + u" | select 16:00 | click btn_Book"_s);
        refused(u"txt_user txt_password"_s);
        script(u"verify anna secret1"_s);
        refused(u"txt_BookerName txt_BookerOrg txt_BookerTel txt_BookerMemberID txt_BookerStudentID"_s);
        script(u"click cmd_Cancel | click btn_AddEntry | verify anna secret1"_s);
        refused(u"txt_BookerName txt_BookerMemberID"_s);
        script(u"click cmd_Cancel | closed frm_WaitingList | select 17:00 | click btn_Clear | verify anna secret1"_s);
        refused(u"txt_Answer"_s);
        d->step(u"cancel"_s, [] { WindowDriver::control<QDialog>(u"frm_AskText"_s)->reject(); });
        script(u"closed frm_AskText"_s);
        frm_AdminPass admin(*m_program->station());
        play();
        for (const QString &name : {u"txtLogin"_s, u"txtPassword"_s}) {
            auto *box = admin.findChild<QLineEdit *>(name);
            box->setText(u"a\\b"_s);
            QCOMPARE(box->text(), u"ab"_s);
        }
    }

    void noFields()
    {
        writeSettings(centre(m_server, {{u"pitch0"_s, QString()}}).replace("[Shared]\nShared0=0&1\nShared1=0&2\n", ""));
        book(u"16:00"_s, 0, u"Team A"_s);
        start();
        const QString refused = u" | answer No field is set up: nothing can be booked."_s;
        script(logIn + u" | see lbl_FieldName No field is set up | see lbl_FieldInfo  | select 16:00 18:00"_s);
        d->step(u"what is written"_s, [this] { m_server.startLog(); });
        for (const QString &entry :
             u"btn_Book btn_Clear btn_AddEntry mnu_Book mnu_AddEntry mnu_Copy mnu_Paste mnu_BlockBook1 mnu_Add15 "
             "mnu_ClearAddition mnu_SetMember mnu_Delete mnu_History"_s.split(u' '))
            script(u"click "_s + entry + refused);
        d->step(u"keys"_s, [] { QTest::keyClick(WindowDriver::control<QWidget>(u"LayoutPlan1"_s), Qt::Key_Return); });
        script(u"key Ctrl+V"_s + refused +
               u" | key P | key O | tick 15:55:00 | tick 16:02:00 | page 4 | "
               "click btn_AddEntry2 | answer No field is set up: nobody can wait for one. | page 2"_s);
        expect(u"false"_s, [this] { return part(u"btn_LightCommit"_s)->isEnabled() ? u"true"_s : u"false"_s; });
        play(u"errors 0"_s);
        QCOMPARE(m_server.takeLog().filter(QRegularExpression(u"^(INSERT|UPDATE|DELETE|LOCK)"_s)), QStringList());
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

STORY_MAIN(tst_StoriesOfFaults)
#include "tst_StoriesOfFaults.moc"
