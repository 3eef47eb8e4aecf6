#include "support/Story.h"

#include "schedule/DayView.h"
#include "support/CuttingProxy.h"
#include "support/DeedCounter.h"
#include "support/DrawnRows.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QScrollBar>
#include <QTableView>

using namespace Qt::StringLiterals;

/// What other counters do meanwhile, and what staff see of a database that does not answer.
class tst_StoriesOfOthers : public Story
{
    Q_OBJECT

private Q_SLOTS:
    void othersChanges()
    {
        m_now.setTime({14, 30});
        start();
        script(logIn + court + u" | select 23:00 24:00"_s);
        d->step(u"a low window"_s, [this] { m_program->mainWindow()->resize(1100, 500); });
        const auto scroll = [] { return WindowDriver::control<QTableView>(grid)->verticalScrollBar(); };
        d->await(u"scrolling"_s, [=] { return scroll()->maximum() > 2; });
        d->step(u"scroll"_s, [=] { scroll()->setValue(2); });
        other(u"book 20:00 6 Team A"_s);
        const QString marked = u"2: 15 16"_s;
        const auto marks = [=] {
            QString text = QString::number(scroll()->value()) + u':';
            for (const int row : WindowDriver::control<DayView>(grid)->selectedRowNumbers())
                text += u' ' + QString::number(row);
            return text;
        };
        script(u"tick 14:30:01 | tick 14:30:02 | grid 20:00 Team A"_s);
        expect(marked, marks);
        other(u"clear 20:00 6 Team A"_s);
        script(u"tick 14:30:03 | tick 14:30:04 | grid "_s);
        // What stands still is looked at and not read.
        d->step(u"log"_s, [this] { m_server.startLog(); });
        script(u"tick 14:30:05 | tick 14:30:06 | tick 14:30:07 | tick 14:30:08"_s);
        expect(u"2 of 2"_s, [this] {
            const QStringList log = m_server.takeLog();
            return u"%1 of %2"_s.arg(log.filter(u"MAX(m_id)"_s).size()).arg(log.size());
        });
        // Under an open window nothing is read at all.
        script(u"click btn_AddEntry"_s);
        d->awaitWindow(u"frm_VerifyUser"_s);
        other(u"book 21:00 6 Team B"_s);
        d->step(u"log"_s, [this] { m_server.startLog(); });
        script(u"tick 14:30:10 | tick 14:30:12 | tick 14:30:14"_s);
        expect(QString(), [this] { return m_server.takeWholeLog().join(u'\n'); });
        script(u"click btn_Cancel | closed frm_VerifyUser | grid  | tick 14:30:16 | grid 21:00 Team B"_s);
        expect(marked, marks);
        play(u"errors 0"_s);
    }

    void changedMeanwhile()
    {
        book(u"16:00"_s, 6, u"Team A"_s);
        start();
        script(logIn + court + u" | select 16:00 | click btn_Clear | verify anna secret1 | type txt_Answer rain"_s);
        other(u"clear 16:00 6 Team A; book 16:00 6 Team B"_s);
        play(u"enter txt_Answer | answer This hour has changed meanwhile: Team B | grid 16:00 Team B | errors 0"_s);
    }

    void takenGround()
    {
        start();
        const QString taken =
            u" | click btn_Book | answer The field already being booked | click btn_Clear | "
            "answer Extra time on another field takes the ground of this hour. It is changed there."_s;
        play(logIn +
             u" | select 16:00 | click btn_Book | verify anna secret1 | type txt_BookerName Team A | "
             "click cmd_OK | closed frm_Booker | click mnu_Add30 | verify anna secret1 | closed frm_VerifyUser | "
             "key O | grid 16:00 Shared Booking, 17:00 Taken: pitch0 +30 min | select 17:00"_s +
             taken +
             u" | key P | select 16:00 | click mnu_ClearAddition | verify anna secret1 | closed frm_VerifyUser | "
             "key O | grid 16:00 Shared Booking | select 17:00 | click btn_Book | verify anna secret1 | "
             "type txt_BookerName Team B | click cmd_OK | closed frm_Booker | select 17:00 | click mnu_Add15 | "
             "verify anna secret1 | closed frm_VerifyUser | key P | select 18:00 | "
             "grid 16:00 Team A, 17:00 Partially Shared, 18:00 Taken: pitch1 +15 min"_s +
             taken + u" | errors 0"_s);
    }

    // One quiet line and no window, and ever longer pauses between the looks.
    void noConnection()
    {
        m_now.setTime({15, 30});
        start();
        QLocalServer nobody;
        QStringList looks;
        connect(&nobody, &QLocalServer::newConnection, this, [&] {
            looks << m_now.toString(u"mm:ss"_s);
            nobody.nextPendingConnection()->abort();
        });
        script(logIn + u" | see lbl_NoConnection -"_s);
        d->step(u"the server goes"_s, [&] {
            m_server.kill();
            QLocalServer::removeServer(m_server.socketPath());
            QVERIFY(nobody.listen(m_server.socketPath()));
        });
        for (int second = 1; second <= 130; ++second)
            script(u"tick 15:%1:%2 | settled"_s.arg(30 + second / 60).arg(second % 60, 2, 10, QChar(u'0')));
        // Those of the full minutes are the plan's.
        expect(u"30:02 30:06 30:14 30:30 31:00 31:00 31:30 32:00 32:00"_s, [&] { return looks.join(u' '); });
        script(u"see lbl_NoConnection No connection to the database since 15:30"_s);
        d->step(u"the server comes"_s, [&] {
            nobody.close();
            m_server.start();
            book(u"20:00"_s, 0, u"Elsewhere"_s);
        });
        play(u"tick 15:32:11 | settled | see lbl_NoConnection No connection to the database since 15:30 | "
             "tick 15:32:30 | settled | tick 15:32:31 | see lbl_NoConnection - | errors 0"_s);
    }

    void noAnswer_data()
    {
        drawnRows(uR"(
            stopped server          | stopped
            network that swallows   | swallowing
            answers after 2 seconds | late
        )"_s);
    }

    // The windows stay alive, each wait is told and can be given up, and what is pressed meanwhile is forgotten.
    void noAnswer()
    {
        const auto [way] = cells<1>();
        m_now.setTime({15, 30});
        CuttingProxy proxy(m_server);
        startBehind(proxy);
        const auto hang = [&, way] {
            d->step(way, [&, way] {
                if (way == u"stopped")
                    m_server.pause();
                else if (way == u"late")
                    proxy.delay(std::chrono::seconds(2));
                else
                    proxy.swallow();
            });
            script(u"watch"_s);
        };
        const auto goOn = [&, way] {
            script(u"settled | alive"_s);
            d->step(u"the network is back"_s, [&, way] {
                m_server.resume();
                proxy.pass();
            });
        };
        script(logIn + court + u" | select 16:00"_s);
        hang();
        script(u"select 18:00 | settled | tick 15:30:02 | settled | tick 15:31:00 | settled | errors 0 | "
               "press btn_Refresh | press btn_Book | press lbl_Counter | see lbl_Waiting Waiting for the answer of the "
               "database server … | press btn_Book | "
               "keys x | press btn_Refresh | tick 15:31:10 | click btn_GiveUp | error Error while accessing database | "
               "errors 1"_s);
        goOn();
        script(u"click btn_Refresh | see lbl_Unread - | select 18:00 | click btn_Book | type txt_user anna | "
               "type txt_password secret1"_s);
        hang();
        script(u"press btn_Go | press btn_Go | press btn_Book | see frm_Waiting Tamsora | press btn_Go | "
               "click btn_GiveUp | error Error while accessing database | errors 2 | see txt_password secret1"_s);
        goOn();
        script(u"click btn_Go | closed frm_VerifyUser | type txt_BookerName Team A"_s);
        hang();
        script(u"press cmd_OK | press cmd_OK | press txt_BookerName | keys xy | press btn_Book | "
               "see lbl_Waiting The booking of pitch6, Saturday 14 November 2026, 18:00 waits for the database … | "
               "keys xy | press cmd_OK | "
               "tick 15:31:20 | press btn_GiveUp | error Error while loading form | errors 3 | "
               "see txt_BookerName Team A"_s);
        goOn();
        expect(QString(), [this] { return bookings(); });
        play(u"press cmd_OK | closed frm_Booker | see lbl_Unread - | grid 18:00 Team A | errors 3"_s);
        QCOMPARE(bookings(), u"18:00|6|Team A|"_s);
    }

    // The answer comes after all: the booking is made, once, and nothing of what was pressed meanwhile.
    void answerAfterAll()
    {
        m_now.setTime({15, 30});
        CuttingProxy proxy(m_server);
        startBehind(proxy);
        script(logIn + court + u" | select 18:00 19:00 | click btn_Book | verify anna secret1"_s);
        d->type(u"txt_BookerName"_s, u"Team A"_s);
        d->step(u"hold"_s, [&] {
            proxy.holdAt(u"INSERT INTO tbl_booking"_s);
            QTimer::singleShot(2000, this, [&] { proxy.letGo(); });
        });
        script(
            u"watch | press cmd_OK | press cmd_OK | press cmd_Cancel | press txt_BookerName | keys xy | press btn_Book "
            u"| see frm_Waiting Tamsora | "
            "press cmd_OK | keys xy | press btn_Book | press btn_Refresh | tick 15:30:02 | see btn_GiveUp &Give up | "
            "closed frm_Booker | settled | alive | grid 18:00 Team A, 19:00 Team A | errors 0"_s);
        play();
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(bookings(), u"18:00|6|Team A|, 19:00|6|Team A|"_s);
    }

    void nobodyPicksUp()
    {
        CuttingProxy proxy(m_server);
        proxy.swallow();
        script(u"watch"_s);
        d->step(u"start"_s, [&] { startBehind(proxy); });
        script(u"see lbl_Waiting Waiting for the answer of the database server … | click btn_GiveUp | "
               "error Error while loading form | type txtLogin anna | type txtPassword secret1 | press btn_GO | "
               "press btn_GO | see frm_Waiting Tamsora | press btn_GO | keys x | click btn_GiveUp | "
               "error Database server cannot be found when trying to login to the system | see txtPassword secret1"_s);
        // Nobody gives up: the wait ends by itself.
        play(u"press btn_GO | error Database server cannot be found when trying to login to the system | alive | "
             "errors 3"_s);
    }

    void commitLost_data()
    {
        drawnRows(uR"(
            not heard of             | unsent     | was not recorded: the connection to the database was lost. Please try again.
            answer lost              | unanswered | was recorded, although the database's answer was lost.
            killed before its answer | killed     | was recorded, although the database's answer was lost.
        )"_s);
    }

    void commitLost()
    {
        const auto [way, told] = cells<2>();
        m_now.setTime({15, 30});
        CuttingProxy proxy(m_server);
        startBehind(proxy);
        script(logIn + court +
               u" | select 18:00 | click btn_Book | verify anna secret1 | type txt_BookerName Team A"_s);
        d->step(way, [&, way] {
            if (way == u"killed")
                proxy.holdAt(u"COMMIT"_s);
            else
                proxy.cutAt(u"COMMIT"_s, way == u"unsent" ? CuttingProxy::Cut::Unsent : CuttingProxy::Cut::Unanswered);
        });
        script(u"watch | press cmd_OK"_s);
        if (way == u"killed") {
            script(u"see frm_Waiting Tamsora | alive"_s);
            d->step(u"the commit goes on, its answer does not come"_s, [&] { proxy.delay(std::chrono::minutes(1)); });
            d->await(u"committed"_s, [this] { return !bookings().isEmpty(); });
            d->step(u"the server dies and comes back"_s, [&] {
                m_server.kill();
                proxy.pass();
                m_server.start();
            });
        }
        script(u"answer The booking of pitch6, Saturday 14 November 2026, 18:00 "_s + told);
        if (way == u"unsent")
            script(u"see txt_BookerName Team A | settled | press cmd_OK"_s);
        play(u"closed frm_Booker | grid 18:00 Team A | errors 0"_s);
        QCOMPARE(bookings(), u"18:00|6|Team A|"_s);
        QCOMPARE(rows(u"SELECT COUNT(*) FROM tbl_remark"_s), u"1"_s);
    }

private:
    /// What counter 2 does, as DeedCounter says it.
    void other(const QString &deeds)
    {
        d->step(u"the other counter: "_s + deeds,
                [=, this] { DeedCounter(m_server.connectionString(), 2).actAll(deeds); });
    }
};

STORY_MAIN(tst_StoriesOfOthers)
#include "tst_StoriesOfOthers.moc"
