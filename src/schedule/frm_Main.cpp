#include "schedule/frm_Main.h"

#include "app/ActivityLog.h"
#include "app/CounterState.h"
#include "app/CounterTables.h"
#include "app/Errors.h"
#include "booking/page_WaitingList.h"
#include "counter/ShiftActions.h"
#include "counter/TillActions.h"
#include "counter/page_Counter.h"
#include "counter/page_Shifts.h"
#include "look/Look.h"
#include "look/SteadyTabs.h"
#include "plan/PlacedPicture.h"
#include "plan/page_Lights.h"
#include "schedule/ControlTips.h"
#include "schedule/HouseBar.h"
#include "schedule/HouseWindows.h"
#include "schedule/frm_Help.h"
#include "schedule/page_Booking.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int headerHeight = 56;
constexpr int clockMilliseconds = 1000;
constexpr int eveningHour = 18;

} // namespace

frm_Main::frm_Main(Station &station, QWidget *parent)
    : QMainWindow(parent), m_station(station), m_shownCounter(station.settings.ThisCounter)
{
    setObjectName(u"frm_Main"_s);
    setWindowTitle(QApplication::applicationName());
    m_tabs = new SteadyTabs;
    m_tabs->setObjectName(u"SSTab1"_s);
    m_tabs->setDocumentMode(true);
    addPages();

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addWidget(m_tabs, 1);
    setCentralWidget(content);
    connectPages();
    connectHouse();
    addControlTips(*this);
    addTabTips(*m_tabs);

    m_clock.setObjectName(u"Clock"_s);
    m_clock.setInterval(clockMilliseconds);
    connect(&m_clock, &QTimer::timeout, this, &frm_Main::tick);
    QApplication::instance()->installEventFilter(this);
}

frm_Main::~frm_Main() = default;

QWidget *frm_Main::makeHeader()
{
    m_topImage = new PlacedPicture;
    m_topImage->setObjectName(u"TopImage"_s);
    m_topImage->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_topImage->setFixedHeight(headerHeight);
    m_counter = new QPushButton;
    m_counter->setObjectName(u"lbl_Counter"_s);
    m_counter->setToolTip(u"Shows who serves the next counter."_s);
    connect(m_counter, &QPushButton::clicked, this, &frm_Main::nextCounter);
    m_noConnection = new QLabel;
    m_noConnection->setObjectName(u"lbl_NoConnection"_s);
    m_noConnection->setMargin(8);
    Look::paint(*m_noConnection, Look::alert);
    m_noConnection->hide();
    auto *layout = new QHBoxLayout(m_topImage);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(m_house = new HouseBar, 1);
    layout->addWidget(m_noConnection);
    layout->addWidget(m_counter);
    return m_topImage;
}

void frm_Main::addPages()
{
    m_booking = new page_Booking(m_station, m_clipboard);
    m_counterPage = new page_Counter(m_station);
    m_lights = new page_Lights(m_station);
    m_waiting = new page_WaitingList(m_station, m_clipboard);
    addPage(m_booking, u"book"_s, u"Bookings"_s);
    addPage(m_counterPage, u"items"_s, u"Counter"_s);
    addPage(m_lights, u"light"_s, u"Lights"_s);
    m_shifts = new page_Shifts(m_station, m_counterPage->actions());
    addPage(m_shifts, u"clock"_s, u"Shifts"_s);
    addPage(m_waiting, u"add-entry"_s, u"Waiting list"_s);
}

void frm_Main::addPage(Page *page, const QString &icon, const QString &title)
{
    m_pages.push_back(page);
    m_tabs->addTab(page, Look::icon(icon), title);
}

Page *frm_Main::shownPage() const
{
    return m_pages.at(std::size_t(m_tabs->currentIndex()));
}

void frm_Main::connectPages()
{
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] { shownPage()->refresh(); });
    connect(m_booking, &page_Booking::dayRead, this, &frm_Main::catchUp);
    connect(m_booking, &page_Booking::planRead, m_lights, &page_Lights::showStatus);
    connect(m_booking, &page_Booking::waitingListTouched, m_waiting, &page_WaitingList::RefreshWaitList);
    connect(m_waiting, &page_WaitingList::clipboardChanged, m_booking, &page_Booking::showClipboard);
    connect(m_waiting, &page_WaitingList::entryCut, this, [this] { m_tabs->setCurrentWidget(m_booking); });
    connect(m_lights, &page_Lights::lightsCommitted, m_booking, &page_Booking::refreshPlan);
    connect(m_counterPage, &page_Counter::logOutWanted, this, &frm_Main::logOut);
    TillActions &till = m_counterPage->actions();
    connect(m_booking, &page_Booking::paymentWanted, &till, &TillActions::addHours);
    connect(m_booking, &page_Booking::invoiceWanted, &till, &TillActions::printInvoice);
    connect(&till, &TillActions::hoursTouched, m_booking, [this] { m_booking->afterOperation(false); });
    connect(&m_shifts->actions(), &ShiftActions::staffChanged, this,
            [this] { guarded(m_station.prompts, ErrorCode::Database, [this] { showCounter(m_shownCounter); }); });
    connect(&m_shifts->actions(), &ShiftActions::shiftClosed, this, &frm_Main::changeShift);
    connect(m_counterPage, &page_Counter::listShown, this, [this](const QString &total) {
        const QString title = total.isEmpty() ? u"Counter"_s : u"Counter  "_s + total;
        m_tabs->setTabText(m_tabs->indexOf(m_counterPage), title);
    });
}

void frm_Main::connectHouse()
{
    m_windows = new HouseWindows(m_station, m_counterPage->actions(), this);
    HouseWindows *windows = m_windows;
    m_shifts->actions().setMayLeave([windows] { return windows->closeAll(); });
    connect(m_house, &HouseBar::membersWanted, windows, &HouseWindows::openMembers);
    connect(m_house, &HouseBar::groupWanted, windows, &HouseWindows::openGroup);
    connect(m_house, &HouseBar::studentsWanted, windows, &HouseWindows::openStudents);
    connect(m_house, &HouseBar::itemsWanted, windows, &HouseWindows::openItems);
    connect(m_house, &HouseBar::optionsWanted, windows, &HouseWindows::openOptions);
    connect(m_house, &HouseBar::summaryWanted, windows, [=, this] { windows->openSummary(m_booking->day()); });
    connect(m_shifts, &page_Shifts::mailWanted, windows, &HouseWindows::openMail);
    connect(windows, &HouseWindows::customerKept, m_booking, &page_Booking::showClipboard);
    connect(windows, &HouseWindows::itemsTouched, m_counterPage, &page_Counter::RefreshStore);
    connect(m_house, &HouseBar::helpWanted, this, [this] { (new frm_Help(shownPage()->objectName(), this))->show(); });
}

void frm_Main::load()
{
    // Without a database there are still the rows of a day, so that staff can go on when the server is back.
    m_booking->setDay(m_station.now().date());
    m_waiting->setDay(m_station.now().date());
    m_booking->RefreshViewInit();
    loadPictures();
    m_lights->resetSwitches();
    bool ok = attempt([this] { loadSpecialGroups(); }, true);
    ok &= attempt([this] { SetCounterStaffShiftStatus(m_station.database, m_station.settings.ThisCounter, 0); }, ok);
    // Looked at before the day is read, so that the first tick does not read and paint everything once more.
    m_watch.look(m_station);
    ok &= m_booking->afterOperation(ok);
    if (ok)
        m_watch.shown();
    ok &= attempt([this] { m_waiting->read(); }, ok);
    attempt([this] { showCounter(m_shownCounter); }, ok);
    const int hour = m_station.now().time().hour();
    // The start hour itself counts as evening.
    m_station.shiftName = hour > m_station.settings.firstHour && hour < eveningHour ? u"morning"_s : u"evening"_s;
    m_booking->focusGrid();
    tick();
    m_clock.start();
    QTimer::singleShot(0, m_counterPage, &page_Counter::load); // nobody pays before the first picture
    // What was read finds its room before the first picture, or the window would be painted twice.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

bool frm_Main::attempt(std::function<void()> step, bool tell)
{
    bool ok = false;
    if (!tell && !m_station.database.isReachable()) {
        // The step before has waited long enough.
    } else if (tell) {
        ok = guarded(m_station.prompts, ErrorCode::LoadingForm, step);
    } else {
        try {
            step();
            ok = true;
        } catch (const std::exception &) {
            // A step before has told of it.
        }
    }
    if (!ok)
        m_missed.push_back(std::move(step));
    return ok;
}

void frm_Main::catchUp()
{
    const auto missed = std::exchange(m_missed, {});
    for (const auto &step : missed)
        attempt(step, false);
}

void frm_Main::loadPictures()
{
    // A picture that cannot be placed keeps staff neither from the others nor from the day.
    const auto place = [this](const auto &load) { guarded(m_station.prompts, ErrorCode::LoadingForm, load); };
    place([this] { m_booking->loadPlan(); });
    place([this] { m_topImage->loadPicture(u"TopHeader"_s); });
    place([this] { m_waiting->loadPlan(); });
}

void frm_Main::loadSpecialGroups()
{
    std::vector<int> groups;
    for (int group = 1; group <= m_station.settings.SpecialGroupLimit; ++group)
        if (SpecialGroupTableExists(m_station.database, group))
            groups.push_back(group);
    for (const int group : groups) {
        m_booking->addSpecialGroup(group);
        m_house->addSpecialGroup(group);
    }
}

void frm_Main::showCounter(int counter)
{
    const QString staff = GetCounterStaff(m_station.database, counter);
    m_shownCounter = counter;
    m_counter->setText(u"Counter "_s + QString::number(counter) + u"\r\n"_s + staff);
}

void frm_Main::nextCounter()
{
    const int next = m_shownCounter < m_station.settings.CounterCount ? m_shownCounter + 1 : 1;
    guarded(m_station.prompts, ErrorCode::Database, [=, this] { showCounter(next); });
}

void frm_Main::tick()
{
    // A message box runs the event loop, and with it this timer: one round at a time.
    if (m_ticking)
        return;
    const QScopedValueRollback ticking(m_ticking, true);
    const QuietReads together(m_station.database); // one second for all that a tick reads
    const QString timeText = m_station.readClock();
    for (Page *page : m_pages)
        page->showTime(timeText);
    followOthers();
}

void frm_Main::followOthers()
{
    m_watch.note(m_station);
    // Nothing changes under a window that is open over the page.
    if (!QApplication::activeModalWidget() && !QApplication::activePopupWidget() && m_watch.hasMoved(m_station)) {
        const bool shown = std::all_of(m_pages.cbegin(), m_pages.cend(), [](Page *page) { return page->follow(); });
        if (shown)
            m_watch.shown();
    }
    const auto &since = m_watch.lostSince();
    m_noConnection->setText(since ? u"No connection to the database since "_s + since->toString(u"hh:mm"_s)
                                  : QString());
    m_noConnection->setVisible(since.has_value());
}

bool frm_Main::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return QMainWindow::eventFilter(watched, event);
    const auto *widget = qobject_cast<QWidget *>(watched);
    if (widget && widget->window() == this && handleKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

bool frm_Main::handleKey(const QKeyEvent &key)
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const bool menuOfGrid = shownPage() == m_booking && key.key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier;
    if (!menuOfGrid && key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F16 && modifiers != Qt::AltModifier) {
        m_tabs->setCurrentWidget(m_counterPage);
        return m_counterPage->takeKey(key);
    }
    return shownPage()->takeKey(key);
}

void frm_Main::closeEvent(QCloseEvent *event)
{
    event->setAccepted(m_windows->closeAll());
}

void frm_Main::logOut()
{
    if (!m_windows->closeAll())
        return;
    WriteActivityLog(m_station, m_station.CurrentStaff, u"log out"_s);
    QApplication::quit();
}

void frm_Main::changeShift()
{
    WriteActivityLog(m_station, m_station.CurrentStaff, u"log out"_s);
    Q_EMIT loggedOut();
}
