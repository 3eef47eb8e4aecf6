#include "schedule/frm_Main.h"

#include "app/ActivityLog.h"
#include "app/CounterState.h"
#include "app/CounterTables.h"
#include "app/Errors.h"
#include "booking/page_WaitingList.h"
#include "counter/page_Counter.h"
#include "counter/page_Shifts.h"
#include "look/Look.h"
#include "plan/PlacedPicture.h"
#include "plan/page_Lights.h"
#include "schedule/page_Booking.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QVBoxLayout>

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
    m_tabs = new QTabWidget;
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
    m_counter->setToolTip(u"Show the next counter"_s);
    connect(m_counter, &QPushButton::clicked, this, &frm_Main::nextCounter);
    auto *layout = new QHBoxLayout(m_topImage);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addStretch(1);
    layout->addWidget(m_counter);
    return m_topImage;
}

void frm_Main::addPages()
{
    m_booking = new page_Booking(m_station, m_clipboard);
    m_counterPage = new page_Counter;
    m_lights = new page_Lights(m_station);
    m_waiting = new page_WaitingList(m_station, m_clipboard);
    addPage(m_booking, u"book"_s, u"Bookings"_s);
    addPage(m_counterPage, u"items"_s, u"Counter"_s);
    addPage(m_lights, u"light"_s, u"Lights"_s);
    addPage(new page_Shifts, u"clock"_s, u"Shifts"_s);
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
    connect(m_booking, &page_Booking::waitingListTouched, m_waiting, &page_WaitingList::RefreshWaitList);
    connect(m_waiting, &page_WaitingList::clipboardChanged, m_booking, &page_Booking::showClipboard);
    connect(m_waiting, &page_WaitingList::entryCut, this, [this] { m_tabs->setCurrentWidget(m_booking); });
    connect(m_lights, &page_Lights::lightsCommitted, m_booking, &page_Booking::refreshPlan);
    connect(m_counterPage, &page_Counter::logOutWanted, this, &frm_Main::logOut);
}

void frm_Main::load()
{
    // Without a database there are still the rows of a day, so that staff can go on when the server is back.
    m_booking->setDay(m_station.now().date());
    m_waiting->setDay(m_station.now().date());
    m_booking->RefreshViewInit();
    // A picture that cannot be placed does not keep staff from the day.
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] { loadPictures(); });
    const bool loaded = guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        loadSpecialGroups();
        SetCounterStaffShiftStatus(m_station.database, m_station.settings.ThisCounter, 0);
        m_lights->resetSwitches();
        m_booking->RefreshView();
        m_waiting->RefreshWaitList();
        showCounter();
    });
    const int hour = m_station.now().time().hour();
    // The start hour itself counts as evening.
    m_shiftName = hour > m_station.settings.firstHour && hour < eveningHour ? u"morning"_s : u"evening"_s;
    if (!loaded)
        m_booking->afterOperation(false);
    tick();
    m_clock.start();
}

void frm_Main::loadPictures()
{
    m_topImage->loadPicture(u"TopHeader"_s);
    m_booking->loadPlan();
    m_waiting->loadPlan();
}

void frm_Main::loadSpecialGroups()
{
    for (int group = 1; group <= m_station.settings.SpecialGroupLimit; ++group)
        if (SpecialGroupTableExists(m_station.database, group))
            m_booking->addSpecialGroup(group);
}

void frm_Main::showCounter()
{
    m_counter->setText(u"Counter "_s + QString::number(m_shownCounter) + u'\n' +
                       GetCounterStaff(m_station.database, m_shownCounter));
}

void frm_Main::nextCounter()
{
    m_shownCounter = m_shownCounter < m_station.settings.CounterCount ? m_shownCounter + 1 : 1;
    guarded(m_station.prompts, ErrorCode::Database, [this] { showCounter(); });
}

void frm_Main::tick()
{
    // A message box runs the event loop, and with it this timer: one round at a time.
    if (m_ticking)
        return;
    const QScopedValueRollback ticking(m_ticking, true);
    const QString timeText = m_station.readClock();
    for (Page *page : m_pages)
        page->showTime(timeText);
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
    if (key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F16 && modifiers != Qt::AltModifier) {
        m_tabs->setCurrentWidget(m_counterPage);
        return true;
    }
    return shownPage()->takeKey(key);
}

void frm_Main::logOut()
{
    WriteActivityLog(m_station, m_station.CurrentStaff, u"log out"_s);
    QApplication::quit();
}
