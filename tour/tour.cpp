// Walks through a day at the counter in the real windows and saves a picture of the screen after every scene.

#include "HouseTour.h"
#include "Program.h"
#include "WindowDriver.h"
#include "app/Application.h"
#include "plan/LayoutPlan.h"
#include "schedule/DayModel.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QCommandLineParser>
#include <QDir>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTableView>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

// Hours that the sample centre leaves free on every day, as rows of a day that begins at 8.
constexpr int row10 = 2;
constexpr int row11 = 3;
constexpr int row15 = 7;
constexpr int row23 = 15;
constexpr int midnightRow = 16;
constexpr int northWhole = 0;
constexpr int northHalf = 2;
constexpr int court = 6;

const QString grid = u"ListView_Book"_s;

/// The part of the screen that windows stand on, in the picture's pixels.
QRect seenPixels(const QPixmap &screen)
{
    QRect seen;
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows)
        if (window->isVisible())
            seen |= window->frameGeometry();
    const qreal scale = screen.devicePixelRatio();
    return QRectF(seen.topLeft() * scale, QSizeF(seen.size()) * scale).toRect() & screen.rect();
}

class Tour
{
public:
    explicit Tour(const QString &folder) : m_folder(folder)
    {
        m_driver.onStep = [this](const QString &what) { m_out << "  " << what << Qt::endl; };
    }

    bool play()
    {
        logIn();
        chooseFieldAndDay();
        bookForMember();
        bookSharedField();
        showHistory();
        addExtraTime();
        changeRate();
        fillFromWaitingList();
        blockBook();
        sell();
        switchLights();
        addHouseTour(m_driver, {[this](const QString &name) { picture(name); },
                                [this] {
                                    verify(u"admin"_s, u"court2026"_s);
                                    m_driver.awaitClosed(u"frm_VerifyUser"_s);
                                }});
        const bool ok = m_driver.run();
        if (!ok)
            m_out << "FAILED: " << m_driver.failure() << Qt::endl;
        return ok && m_saved;
    }

private:
    void picture(const QString &name)
    {
        m_driver.step(u"picture of "_s + name, [this, name] {
            const QString number = QString::number(++m_pictures).rightJustified(2, u'0');
            QApplication::processEvents();
            const QPixmap screen = QGuiApplication::primaryScreen()->grabWindow(0);
            m_saved =
                screen.copy(seenPixels(screen)).save(m_folder + u'/' + number + u'-' + name + u".png"_s) && m_saved;
        });
    }

    void verify(const QString &login, const QString &password)
    {
        m_driver.awaitWindow(u"frm_VerifyUser"_s);
        m_driver.type(u"txt_user"_s, login);
        m_driver.type(u"txt_password"_s, password);
        m_driver.click(u"btn_Go"_s);
    }
    void verifyStaff() { verify(u"mara"_s, u"field2026"_s); }

    void pressHotSpot(const QString &plan, int field)
    {
        m_driver.clickAt(plan, [field](QWidget *widget) {
            return qobject_cast<LayoutPlan *>(widget)->fieldRect(field).center().toPoint();
        });
    }

    void awaitBooker(int row, const QString &booker)
    {
        m_driver.await(u"booker "_s + booker, [=] {
            const auto *table = WindowDriver::control<QTableView>(grid);
            return table && table->model()->index(row, DayModel::BookerName).data().toString().contains(booker);
        });
    }

    void logIn()
    {
        m_driver.awaitWindow(u"frm_Login"_s);
        m_driver.type(u"txtLogin"_s, u"admin"_s);
        m_driver.type(u"txtPassword"_s, u"court2026"_s);
        picture(u"login"_s);
        m_driver.click(u"btn_GO"_s);
        m_driver.awaitWindow(u"frm_Main"_s);
        m_driver.awaitClosed(u"frm_Login"_s);
        picture(u"today"_s);
    }

    void chooseFieldAndDay()
    {
        pressHotSpot(u"LayoutPlan1"_s, court);
        m_driver.step(u"tomorrow in the calendar"_s, [] {
            WindowDriver::control<QCalendarWidget>(u"Calendar"_s)->setSelectedDate(QDate::currentDate().addDays(1));
        });
        m_driver.selectRows(grid, {row23, midnightRow});
        awaitBooker(row23, {});
        picture(u"field-chosen"_s);
    }

    void bookForMember()
    {
        m_driver.click(u"btn_Book"_s);
        m_driver.awaitWindow(u"frm_VerifyUser"_s);
        m_driver.type(u"txt_user"_s, u"mara"_s);
        picture(u"verify"_s);
        verifyStaff();
        m_driver.awaitWindow(u"frm_Booker"_s);
        m_driver.type(u"txt_BookerMemberID"_s, u"M100007"_s);
        m_driver.await(u"the member's name"_s, [] {
            const auto *name = WindowDriver::control<QLineEdit>(u"txt_BookerName"_s);
            return name && !name->text().isEmpty();
        });
        picture(u"booker"_s);
        m_driver.click(u"cmd_OK"_s);
        m_driver.awaitClosed(u"frm_Booker"_s);
        m_driver.await(u"two booked hours"_s, [] {
            const auto *model = WindowDriver::control<QTableView>(grid)->model();
            const QString first = model->index(row23, DayModel::BookerName).data().toString();
            return !first.isEmpty() && first == model->index(midnightRow, DayModel::BookerName).data().toString();
        });
        picture(u"booked"_s);
    }

    void bookFor(const QString &name)
    {
        m_driver.click(u"btn_Book"_s);
        verifyStaff();
        m_driver.awaitWindow(u"frm_Booker"_s);
        m_driver.type(u"txt_BookerName"_s, name);
        m_driver.type(u"txt_BookerTel"_s, u"0455 120 774"_s);
        m_driver.click(u"cmd_OK"_s);
        m_driver.awaitClosed(u"frm_Booker"_s);
    }

    void bookSharedField()
    {
        pressHotSpot(u"LayoutPlan1"_s, northHalf);
        m_driver.selectRows(grid, {row11});
        bookFor(u"Harbour Rovers"_s);
        awaitBooker(row11, u"Harbour Rovers"_s);
        pressHotSpot(u"LayoutPlan1"_s, northWhole);
        awaitBooker(row11, u"Partially Shared"_s);
        picture(u"shared-field"_s);
    }

    void showHistory()
    {
        pressHotSpot(u"LayoutPlan1"_s, court);
        m_driver.step(u"pointer over 23:00"_s, [] {
            auto *table = WindowDriver::control<QTableView>(grid);
            const QPoint point = table->visualRect(table->model()->index(row23, DayModel::BookerName)).center();
            QHelpEvent hover(QEvent::ToolTip, point, table->viewport()->mapToGlobal(point));
            QCoreApplication::sendEvent(table->viewport(), &hover);
        });
        m_driver.await(u"the history"_s, [] {
            const auto windows = QApplication::topLevelWidgets();
            return std::any_of(windows.cbegin(), windows.cend(), [](const QWidget *window) {
                const auto *label = qobject_cast<const QLabel *>(window);
                return label && label->isVisible() && label->text().contains(u"mara book"_s);
            });
        });
        picture(u"history"_s);
    }

    void addExtraTime()
    {
        m_driver.selectRows(grid, {midnightRow});
        m_driver.click(u"mnu_Add30"_s);
        verifyStaff();
        awaitBooker(midnightRow + 1, u"hour"_s);
        picture(u"extra-time"_s);
    }

    void changeRate()
    {
        m_driver.selectRows(grid, {row23});
        m_driver.step(u"open the menu"_s, [] {
            auto *table = WindowDriver::control<QTableView>(grid);
            const QPoint point = table->visualRect(table->model()->index(row11, DayModel::BookerName)).center();
            QContextMenuEvent wanted(QContextMenuEvent::Keyboard, point, table->viewport()->mapToGlobal(point));
            QCoreApplication::sendEvent(table->viewport(), &wanted);
        });
        picture(u"menu"_s);
        m_driver.step(u"close the menu"_s, [] { QApplication::activePopupWidget()->close(); });
        m_driver.click(u"mnu_setStudent"_s);
        verify(u"admin"_s, u"court2026"_s);
        m_driver.awaitClosed(u"frm_VerifyUser"_s);
    }

    void fillFromWaitingList()
    {
        m_driver.click(u"btn_AddEntry"_s);
        verifyStaff();
        m_driver.awaitWindow(u"frm_WaitingList"_s);
        m_driver.type(u"txt_BookerName"_s, u"Nora Lindqvist"_s);
        m_driver.type(u"txt_BookerTel"_s, u"0455 331 908"_s);
        picture(u"waiting-list-entry"_s);
        m_driver.click(u"cmd_OK"_s);
        m_driver.awaitClosed(u"frm_WaitingList"_s);
        m_driver.click(u"btn_Clear"_s);
        verifyStaff();
        m_driver.awaitWindow(u"frm_AskText"_s);
        m_driver.type(u"txt_Answer"_s, u"knee injury"_s);
        picture(u"reason-to-clear"_s);
        m_driver.pressKey(u"txt_Answer"_s, Qt::Key_Return);
        m_driver.awaitClosed(u"frm_AskText"_s);
        m_driver.await(u"the notice that the hour is wanted"_s, [] {
            const auto *notice = WindowDriver::control<QWidget>(u"FreeHourNotice"_s);
            return notice && notice->findChild<QAbstractButton *>();
        });
        picture(u"hour-wanted"_s);
        m_driver.step(u"take the entry"_s, [] {
            const auto buttons = WindowDriver::control<QWidget>(u"FreeHourNotice"_s)->findChildren<QAbstractButton *>();
            for (QAbstractButton *button : buttons)
                if (button->objectName().startsWith(u"btn_TakeWaiting_"_s))
                    return button->click();
        });
        m_driver.pressKey(grid, Qt::Key_V, Qt::ControlModifier);
        verifyStaff();
        awaitBooker(row23, u"Nora Lindqvist"_s);
        picture(u"pasted-from-waiting-list"_s);
    }

    void blockBook()
    {
        m_driver.selectRows(grid, {midnightRow});
        m_driver.click(u"mnu_Copy"_s);
        m_driver.selectRows(grid, {row10, row15, row23});
        m_driver.click(u"mnu_BlockBook1"_s);
        verifyStaff();
        m_driver.awaitWindow(u"frm_BlockBookingResult"_s);
        picture(u"block-booking"_s);
        m_driver.click(u"btn_Close"_s);
        m_driver.awaitClosed(u"frm_BlockBookingResult"_s);
        picture(u"day-after-block-booking"_s);
    }

    void choose(Qt::Key key, Qt::Key quantity)
    {
        m_driver.pressKey(u"ListView_Store"_s, key);
        m_driver.awaitWindow(u"frm_Calculator"_s);
        m_driver.pressKey(u"lbl_OK"_s, quantity);
    }

    void addToList(Qt::Key key, Qt::Key quantity)
    {
        choose(key, quantity);
        m_driver.click(u"lbl_OK"_s);
        m_driver.awaitClosed(u"frm_Calculator"_s);
    }

    void sell()
    {
        m_driver.selectRows(grid, {midnightRow});
        m_driver.click(u"btn_Paid"_s);
        m_driver.answer(u"The customer got member rate"_s);
        m_driver.answer(u"The customer got extra time"_s);
        m_driver.step(u"counter page"_s, [] { WindowDriver::control<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(1); });
        addToList(Qt::Key_F1, Qt::Key_4);
        addToList(Qt::Key_F9, Qt::Key_2);
        choose(Qt::Key_F16, Qt::Key_2);
        picture(u"keypad"_s);
        m_driver.click(u"lbl_OK"_s);
        m_driver.awaitClosed(u"frm_Calculator"_s);
        picture(u"till"_s);
        m_driver.type(u"txt_Find"_s, u"roll"_s);
        picture(u"find"_s);
        m_driver.pressKey(u"txt_Find"_s, Qt::Key_Escape);
        m_driver.click(u"btn_Pay"_s);
        m_driver.awaitWindow(u"frm_Change"_s);
        m_driver.type(u"txt_e"_s, u"5000"_s);
        picture(u"still-to-pay"_s);
        m_driver.type(u"txt_e"_s, u"10000"_s);
        picture(u"change"_s);
        m_driver.click(u"btn_OK"_s);
        m_driver.await(u"the sale"_s, [] {
            const auto *close = WindowDriver::control<QAbstractButton>(u"btn_Close"_s);
            return close && close->isEnabled();
        });
        picture(u"sold"_s);
        m_driver.click(u"btn_PrintReceipt"_s);
        m_driver.awaitWindow(u"frm_PrintReceipt"_s);
        picture(u"receipt"_s);
        m_driver.click(u"btn_Close"_s);
        m_driver.awaitClosed(u"frm_PrintReceipt"_s);
        m_driver.click(u"btn_Close"_s);
        m_driver.awaitClosed(u"frm_Change"_s);
        picture(u"next-customer"_s);
    }

    void switchLights()
    {
        m_driver.step(u"lights page"_s, [] { WindowDriver::control<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(2); });
        pressHotSpot(u"LayoutPlan2"_s, court);
        m_driver.click(u"LightSwitch_0"_s);
        m_driver.click(u"LightSwitch_1"_s);
        m_driver.click(u"btn_LightCommit"_s);
        verifyStaff();
        m_driver.awaitWindow(u"frm_Message"_s);
        picture(u"lights-question"_s);
        m_driver.step(u"yes"_s, [] {
            auto *box = QApplication::activeModalWidget();
            const auto buttons = box->findChildren<QAbstractButton *>();
            for (QAbstractButton *button : buttons)
                if (button->text().contains(u"Yes"_s))
                    return button->click();
        });
        m_driver.awaitClosed(u"frm_Message"_s);
        picture(u"lights"_s);
        m_driver.step(u"waiting-list page"_s,
                      [] { WindowDriver::control<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(4); });
        picture(u"waiting-list"_s);
    }

    QString m_folder;
    WindowDriver m_driver;
    QTextStream m_out{stdout};
    int m_pictures = 0;
    bool m_saved = true;
};

} // namespace

int main(int argc, char **argv)
{
    Application application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({u"out"_s, u"Folder for the pictures"_s, u"folder"_s, u"."_s});
    parser.process(application);
    QDir().mkpath(parser.value(u"out"_s));
    Program program;
    return program.start() && Tour(parser.value(u"out"_s)).play() ? 0 : 1;
}
