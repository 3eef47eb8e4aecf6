#include "support/Story.h"

#include "look/Look.h"
#include "schedule/DayView.h"
#include "schedule/frm_Main.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QCalendarWidget>
#include <QLayout>
#include <QTabWidget>
#include <QTableView>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// How much lighter one of two colours is, from 1 to 21; 4.5 can be read by people with poor sight.
double contrast(const QColor &one, const QColor &other)
{
    const auto light = [](const QColor &colour) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({light(one), light(other)});
    return (lighter + 0.05) / (darker + 0.05);
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

/// How the windows look and are worked with, by keys, mouse and touch.
class tst_StoriesOfWindows : public Story
{
    Q_OBJECT

private Q_SLOTS:
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

    void menuByKey()
    {
        start();
        script(logIn + u" | select 16:00"_s);
        for (const auto &[key, modifier] :
             {std::pair{Qt::Key_F10, Qt::ShiftModifier}, {Qt::Key_Menu, Qt::NoModifier}}) {
            d->pressKey(grid, key, modifier);
            d->step(u"the menu"_s, [] {
                QWidget *menu = QApplication::activePopupWidget();
                QVERIFY(menu);
                QCOMPARE(menu->objectName(), u"mnu_Mouse"_s);
                auto *table = WindowDriver::control<QTableView>(grid);
                const QPoint corner = table->viewport()->mapFromGlobal(menu->pos());
                QCOMPARE(table->rowAt(corner.y()), rowOf(u"16:00"_s));
                menu->close();
            });
        }
        play(u"key Shift+F9"_s);
        QCOMPARE(part<QTabWidget>(u"SSTab1"_s)->currentIndex(), 1);
    }

    void selectingSeveral()
    {
        start();
        script(logIn + court + u" | click btn_SelectSeveral | select 16:00 18:00 20:00"_s);
        for (const QString &hour : {u"18:00"_s, u"19:00"_s}) {
            d->step(hour, [hour] {
                auto *table = WindowDriver::control<QTableView>(grid);
                const QPoint cell = table->visualRect(table->model()->index(rowOf(hour), 2)).center();
                QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell);
                QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell);
            });
            script(u"see lbl_What Book pitch6, "_s +
                   (hour == u"18:00" ? u"16:00 to 17:00, 18:00 to 19:00, 20:00 to 21:00"_s
                                     : u"16:00 to 17:00, 18:00 to 21:00"_s) +
                   u" | click btn_Cancel | closed frm_VerifyUser"_s);
        }
        play(u"errors 0"_s);
    }

    // A click on the day that an arrow key chose reads it again, and one on another day reads that once.
    void daysByKeyAndClick()
    {
        start();
        const auto reading = [this](const QString &calendar, const QString &table, const std::function<void()> &act,
                                    const QString &wanted) {
            d->step(calendar, [=, this] {
                m_server.startLog();
                act();
            });
            d->step(calendar, [=] { QCoreApplication::processEvents(); });
            expect(wanted, [=, this] {
                const QStringList read = m_server.takeLog().filter(table);
                return QString::number(read.size()) + u' ' + read.value(0).section(u"2026-11-"_s, 1).left(2);
            });
        };
        const auto days = [&](const QString &name, const QString &table) {
            const auto press = [this, name] {
                QTest::keyClick(part(name)->findChild<QWidget *>(u"qt_calendar_calendarview"_s), Qt::Key_Right);
            };
            const auto click = [this, name](int day) {
                auto *calendar = part<QCalendarWidget>(name);
                calendar->setSelectedDate({2026, 11, day});
                Q_EMIT calendar->clicked({2026, 11, day});
            };
            reading(name, table, press, u"1 15"_s);
            reading(
                name, table, [=] { click(15); }, u"1 15"_s);
            reading(
                name, table, [=] { click(17); }, u"1 17"_s);
            reading(
                name, table, [=] { click(17); }, u"1 17"_s);
        };
        script(logIn);
        days(u"Calendar"_s, u"b_paid,b_extratime"_s);
        script(u"page 4"_s);
        days(u"Calendar2"_s, u"tbl_waitlist"_s);
        play(u"errors 0"_s);
    }

    void confirming()
    {
        m_server.exec(u"INSERT INTO tbl_staff (st_login, st_password, st_access) VALUES "
                      "('cleo','secret3',0), ('dora','secret4',0), ('emma','secret5',0);"_s);
        writeSettings(centre(m_server, {{u"display6"_s, u"Court <1>"_s}}));
        start();
        const QString cancel = u" | click btn_Cancel | closed frm_VerifyUser"_s;
        script(logIn + court +
               u" | select 16:00 | click btn_Book | see lbl_What Book Court <1>, 16:00 | "
               "see btn_Recent_1 - | verify anna secret1 | type txt_BookerName Team A | click cmd_OK | "
               "closed frm_Booker | click btn_Clear | see lbl_What Clear Court <1>, 16:00 | see txt_user  | "
               "see btn_Recent_1 &1 anna | see btn_Recent_2 - | click btn_Recent_1 | see txt_user anna"_s);
        d->step(u"on to the password"_s,
                [] { QCOMPARE(QApplication::activeModalWidget()->focusWidget()->objectName(), u"txt_password"_s); });
        script(
            u"type txt_password secret2 | click btn_Go | answer Invalid Password, try again!"_s + cancel +
            u" | click mnu_Add15 | see lbl_What Add 15 minutes to Court <1>, 16:00"_s + cancel +
            u" | click mnu_SetMember | see lbl_What Change the rate of Court <1>, 16:00"_s + cancel +
            u" | key Ctrl+C | select 18:00 19:00 21:00 | key Ctrl+V | see lbl_What "
            "Paste on Court <1>, 18:00 to 20:00, 21:00 to 22:00"_s +
            cancel +
            u" | click mnu_BlockBook1 | see lbl_What Block book Court <1>, 18:00 to 20:00, 21:00 to 22:00, 4 weeks"_s +
            cancel);
        for (const QString &staff :
             {u"boss secret2"_s, u"cleo secret3"_s, u"dora secret4"_s, u"anna secret1"_s, u"emma secret5"_s})
            script(u"click btn_AddEntry | see lbl_What Put on the waiting list of Court <1> | verify "_s + staff +
                   u" | click cmd_Cancel | closed frm_WaitingList"_s);
        script(u"click btn_AddEntry | see btn_Recent_1 &1 emma | see btn_Recent_2 &2 anna | see btn_Recent_3 &3 dora | "
               "see btn_Recent_4 &4 cleo | see btn_Recent_5 -"_s);
        d->step(u"Alt+3"_s, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_3, Qt::AltModifier); });
        d->await(u"dora"_s, [] { return textOf(u"txt_user"_s) == u"dora"; });
        script(cancel);
        d->step(u"tomorrow"_s, [this] { m_now = m_now.addDays(1); });
        play(u"click btn_AddEntry | see btn_Recent_1 -"_s + cancel + u" | errors 0"_s);
    }

    void fieldsBesideThePlayers()
    {
        writeSettings(centre(m_server, {{u"display6"_s, u"Court 7"_s}, {u"display0"_s, u"Pitch"_s}}));
        for (const int field : {0, 6, 12})
            book(u"14:00"_s, field, u"Team "_s + QString::number(field));
        start();
        script(logIn + u" | see CurrentPlayList 0 - Team 0\n6 - Team 6\n12 - Team 12\n | see NextPlayList "_s);
        d->step(u"the names"_s, [this] {
            auto *names = part(u"CurrentPlayList_Fields"_s);
            QCOMPARE(names->accessibleName(), u"Pitch\nCourt 7"_s);
            // Two lines are written on, the third is not, nor is the list of nobody.
            const QImage picture = names->grab().toImage();
            const int line = part(u"CurrentPlayList"_s)->fontMetrics().lineSpacing();
            for (int i = 0; i < 3; ++i) {
                const QRect place(0, 4 + i * line, picture.width(), line);
                QImage empty(place.size(), picture.format());
                empty.fill(Qt::white);
                QCOMPARE(picture.copy(place) == empty, i == 2);
            }
            QCOMPARE(part(u"NextPlayList_Fields"_s)->width(), 0);
        });
        play(u"errors 0"_s);
    }

    void specialGroups_data()
    {
        drawnRows(uR"(
            none       |           |
            with a gap | 1 4       | 1 4
            the last   | 5         | 5
            all        | 1 2 3 4 5 | 1 2 3 4 5
            too many   | 2 6       | 2
        )"_s);
    }

    void specialGroups()
    {
        const auto [tables, shown] = cells<2>();
        m_server.exec(u"DROP TABLE IF EXISTS tbl_specialgroup1, tbl_specialgroup2"_s);
        for (const QString &group : tables.split(u' ', Qt::SkipEmptyParts))
            m_server.exec(u"CREATE TABLE tbl_specialgroup"_s + group + u" LIKE tbl_member"_s);
        TestStation station(m_server);
        frm_Main window(station);
        window.load();
        QStringList buttons;
        const QLayout *layout = window.findChild<QWidget *>(u"btn_Item"_s)->parentWidget()->layout();
        for (int i = 0; i < layout->count(); ++i)
            if (const QWidget *button = layout->itemAt(i)->widget())
                buttons << button->objectName().section(u'_', 1);
        QStringList wanted{u"Membership"_s};
        for (const QString &group : shown.split(u' ', Qt::SkipEmptyParts))
            wanted << u"MemberDynamic_"_s + group;
        QCOMPARE(buttons, wanted + QStringList({u"Student"_s, u"Item"_s, u"Summary"_s, u"Options"_s, u"Help"_s}));
    }

    void everyTextCanBeRead()
    {
        QVERIFY(std::abs(contrast(Qt::black, Qt::white) - 21) < 0.01 && contrast({120, 126, 128}, Qt::white) < 4.5);
        QCOMPARE(Look::presentHour.text, QColor(0, 192, 0));
        QCOMPARE(Look::hourBefore.text, QColor(255, 0, 0));
        const QColor weekend = Look::alert.background;
        std::vector<Look::Tone> tones{Look::free,      Look::booked, Look::paid,        Look::past,      Look::shared,
                                      Look::extraTime, Look::alert,  Look::presentHour, Look::hourBefore};
        for (const QColor &ground : {Look::paper, Look::shared.background})
            tones.push_back({ground, weekend});
        tones.push_back({Look::paper, Look::accent});
        const QPalette palette = QApplication::palette();
        using P = QPalette;
        const std::initializer_list<std::pair<P::ColorRole, P::ColorRole>> texts{
            {P::Window, P::WindowText},      {P::Base, P::Text},
            {P::AlternateBase, P::Text},     {P::Button, P::ButtonText},
            {P::Base, P::PlaceholderText},   {P::Highlight, P::HighlightedText},
            {P::ToolTipBase, P::ToolTipText}};
        for (const auto group : {P::Active, P::Inactive, P::Disabled})
            for (const auto &[ground, text] : texts)
                tones.push_back({palette.color(group, ground), palette.color(group, text)});
        for (const auto &[ground, text] : tones)
            QVERIFY2(contrast(ground, text) >= 4.5, qPrintable(text.name() + u" on "_s + ground.name()));
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

STORY_MAIN(tst_StoriesOfWindows)
#include "tst_StoriesOfWindows.moc"
