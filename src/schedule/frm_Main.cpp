#include "schedule/frm_Main.h"

#include "app/ActivityLog.h"
#include "app/CounterState.h"
#include "app/CounterTables.h"
#include "app/Errors.h"
#include "app/Formats.h"
#include "booking/page_WaitingList.h"
#include "look/Look.h"
#include "plan/LayoutPlan.h"
#include "plan/PlacedPicture.h"
#include "plan/page_Lights.h"
#include "schedule/PlayLists.h"
#include "schedule/SlotActions.h"
#include "schedule/page_Booking.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int headerHeight = 56;
constexpr int clockMilliseconds = 1000;
constexpr int eveningHour = 18;

// The letter keys follow the top letter row from right to left, so that the fields lie under one hand.
constexpr std::array fieldKeys{Qt::Key_P, Qt::Key_O, Qt::Key_I, Qt::Key_U, Qt::Key_Y,
                               Qt::Key_T, Qt::Key_R, Qt::Key_E, Qt::Key_W};

} // namespace

frm_Main::frm_Main(Station &station, QWidget *parent)
    : QMainWindow(parent),
      m_station(station),
      m_alertCaptions(std::size_t(std::max(0, station.settings.MaxFieldIndex + 1)))
{
    setObjectName(u"frm_Main"_s);
    setWindowTitle(QApplication::applicationName());
    m_pages = new QTabWidget;
    m_pages->setObjectName(u"SSTab1"_s);
    m_pages->setDocumentMode(true);
    addPages();

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addWidget(m_pages, 1);
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

QWidget *frm_Main::laterPage(const QString &title, const QString &sentence, QLabel *time)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(24, 24, 24, 24);
    if (time)
        layout->addWidget(time, 0, Qt::AlignRight);
    auto *heading = new QLabel(title);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    font.setBold(true);
    heading->setFont(font);
    layout->addWidget(heading);
    layout->addWidget(new QLabel(sentence));
    layout->addStretch(1);
    return page;
}

void frm_Main::addPages()
{
    m_booking = new page_Booking(m_station, m_clipboard);
    m_lights = new page_Lights(m_station);
    m_waiting = new page_WaitingList(m_station, m_clipboard);
    m_waitingPlan = new LayoutPlan;
    m_waitingPlan->setObjectName(u"LayoutPlan3"_s);
    m_waiting->setPlan(m_waitingPlan);
    m_counterTime = new QLabel;
    m_counterTime->setObjectName(u"txt_Time2"_s);
    m_lightsTime = m_lights->findChild<QLabel *>(u"txt_Time3"_s);

    m_pages->addTab(m_booking, Look::icon(u"book"_s), u"Bookings"_s);
    m_pages->addTab(laterPage(u"Counter"_s, u"Hours and goods will be paid here in a later version."_s, m_counterTime),
                    Look::icon(u"items"_s), u"Counter"_s);
    m_pages->addTab(m_lights, Look::icon(u"light"_s), u"Lights"_s);
    m_pages->addTab(laterPage(u"Shifts"_s, u"Shifts will be ended and handed over here in a later version."_s),
                    Look::icon(u"clock"_s), u"Shifts"_s);
    m_pages->addTab(m_waiting, Look::icon(u"add-entry"_s), u"Waiting list"_s);
}

void frm_Main::connectPages()
{
    connect(m_pages, &QTabWidget::currentChanged, this, &frm_Main::selectPage);
    connect(m_booking, &page_Booking::dayRead, this, [this](bool ok) {
        refreshPlan();
        if (ok)
            catchUp();
    });
    connect(m_booking, &page_Booking::clockClicked, this, [this] {
        guarded(m_station.prompts, ErrorCode::Database, [this] { RefreshAlert(m_station, m_alertCaptions); });
        m_booking->plan().setAlertCaptions(m_alertCaptions);
    });
    connect(m_booking, &page_Booking::clipboardChanged, m_booking, &page_Booking::showClipboard);
    connect(m_booking, &page_Booking::waitingEntryWanted, this, &frm_Main::takeWaitingEntry);
    connect(m_booking, &page_Booking::waitingListTouched, m_waiting, &page_WaitingList::RefreshWaitList);
    connect(m_waiting, &page_WaitingList::clipboardChanged, m_booking, &page_Booking::showClipboard);
    connect(m_waiting, &page_WaitingList::entryCut, this, [this] { m_pages->setCurrentIndex(BookingPage); });
    connect(m_waitingPlan, &LayoutPlan::hovered, this, [this](const QString &text) { m_waitingPointer = text; });
    connect(m_waitingPlan, &LayoutPlan::clicked, this,
            [this] { setWaitingField(clickedField(m_waitingPointer, m_station.settings.MaxFieldIndex)); });
    connect(m_lights, &page_Lights::lightsCommitted, this, &frm_Main::refreshPlan);
}

void frm_Main::load()
{
    // Without a database there are still the rows of a day, so that staff can go on when the server is back.
    m_booking->setDay(m_station.now().date());
    m_waiting->setDay(m_station.now().date());
    m_booking->RefreshViewInit();
    m_booking->playLists().setCurrentIndex(1);
    loadPictures();
    m_booking->plan().setSelectedField(0);
    m_waitingPlan->setSelectedField(0);
    m_lights->resetSwitches();
    bool ok = attempt([this] { loadSpecialGroups(); }, true);
    ok &= attempt([this] { SetCounterStaffShiftStatus(m_station.database, m_station.settings.ThisCounter, 0); }, ok);
    ok &= m_booking->afterOperation(ok);
    ok &= attempt([this] { m_waiting->read(); }, ok);
    attempt([this] { showCounter(m_station.settings.SelectedCounter); }, ok);
    const int hour = m_station.now().time().hour();
    // The start hour itself counts as evening.
    m_shiftName = hour > m_station.settings.firstHour && hour < eveningHour ? u"morning"_s : u"evening"_s;
    tick();
    m_clock.start();
}

bool frm_Main::attempt(std::function<void()> step, bool tell)
{
    bool ok = false;
    if (tell) {
        ok = guarded(m_station.prompts, ErrorCode::LoadingForm, step);
    } else {
        try {
            step();
            ok = true;
        } catch (const DbError &) {
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
    const int maxField = m_station.settings.MaxFieldIndex;
    const auto &displayNames = m_station.settings.FieldDisplayNames;
    const std::vector<QString> names(displayNames.cbegin(), displayNames.cbegin() + maxField + 1);
    // A picture that cannot be placed keeps staff neither from the others nor from the day.
    const auto place = [this](const auto &load) { guarded(m_station.prompts, ErrorCode::LoadingForm, load); };
    place([&] { m_booking->plan().load(u"Layout"_s, u"HotSpot"_s, maxField); });
    m_booking->plan().setFieldNames(names);
    m_booking->plan().addAlertLabels();
    place([&] { m_topImage->loadPicture(u"TopHeader"_s); });
    place([&] { m_waitingPlan->load(u"WaitingList"_s, u"HotSpot2"_s, maxField); });
    m_waitingPlan->setFieldNames(names);
}

void frm_Main::loadSpecialGroups()
{
    std::vector<int> groups;
    for (int group = 1; group <= m_station.settings.SpecialGroupLimit; ++group)
        if (SpecialGroupTableExists(m_station.database, group))
            groups.push_back(group);
    for (const int group : groups)
        m_booking->addSpecialGroup(group);
}

void frm_Main::showCounter(qint16 counter)
{
    const QString staff = GetCounterStaff(m_station.database, counter);
    m_station.settings.SelectedCounter = counter;
    m_counter->setText(u"Counter "_s + QString::number(counter) + u"\r\n"_s + staff);
}

void frm_Main::nextCounter()
{
    const qint16 shown = m_station.settings.SelectedCounter;
    const auto next = qint16(shown < m_station.settings.CounterCount ? shown + 1 : 1);
    guarded(m_station.prompts, ErrorCode::Database, [=, this] { showCounter(next); });
}

void frm_Main::selectPage(int page)
{
    if (page == LightsPage)
        guarded(m_station.prompts, ErrorCode::Database, [this] { m_lights->refresh(); });
    else if (page == WaitingPage)
        m_waiting->RefreshWaitList();
}

void frm_Main::setWaitingField(int field)
{
    if (field < 0)
        return;
    m_waitingPlan->setSelectedField(field);
    m_waiting->selectField(field);
}

void frm_Main::takeWaitingEntry(const QString &id)
{
    guarded(m_station.prompts, ErrorCode::Database, [&] { cutWaitingEntry(m_station, m_clipboard, id); });
    m_booking->showClipboard();
}

void frm_Main::refreshPlan()
{
    m_planMinute = m_station.now().time().minute();
    std::vector<FieldStatus> status; // without a database the plans say nothing rather than something old
    try {
        status =
            readPlanStatus(m_station.database, m_station.now(), m_station.hours(), m_station.settings.MaxFieldIndex);
    } catch (const DbError &) {
        status.clear();
    }
    m_booking->plan().setFieldStatus(status);
    m_lights->showStatus(status);
}

void frm_Main::tick()
{
    // A message box runs the event loop, and with it this timer: one round at a time.
    if (m_ticking)
        return;
    const QScopedValueRollback ticking(m_ticking, true);
    const QDateTime now = m_station.now();
    m_station.timeText = clockText(now);
    m_counterTime->setText(m_station.timeText);
    if (m_lightsTime)
        m_lightsTime->setText(m_station.timeText);
    m_booking->tick(m_station.timeText);
    const AlertClock::Tick due = m_alertClock.tick(now.time());
    if (due.refresh && !refreshAlerts(due.again))
        m_alertClock.failed();
    if (due.clear)
        std::fill(m_alertCaptions.begin(), m_alertCaptions.end(), QString());
    showAlerts(due.lit);
    if (m_planMinute >= 0 && m_planMinute != now.time().minute())
        refreshPlan();
}

// While a window is open over this one, an error is told by the page alone: no second window is stacked on it. The
// clock goes on behind its own.
bool frm_Main::refreshAlerts(bool again)
{
    const bool quietly = again || QApplication::activeModalWidget();
    try {
        RefreshAlert(m_station, m_alertCaptions);
    } catch (const DbError &) {
        if (!quietly)
            QMetaObject::invokeMethod(
                this,
                [this, error = std::current_exception()] {
                    guarded(m_station.prompts, ErrorCode::Database, [&error] { std::rethrow_exception(error); });
                },
                Qt::QueuedConnection);
        else if (!again)
            m_booking->afterOperation(false);
        return false;
    }
    m_booking->afterOperation(!quietly);
    return true;
}

void frm_Main::showAlerts(bool lit)
{
    m_booking->plan().setAlertCaptions(m_alertCaptions);
    m_booking->plan().setAlertsLit(lit);
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
    const int page = m_pages->currentIndex();
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const bool menuOfGrid = page == BookingPage && key.key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier;
    if (!menuOfGrid && key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F16 && modifiers != Qt::AltModifier) {
        m_pages->setCurrentIndex(CounterPage);
        return true;
    }
    if (page == CounterPage && key.key() == Qt::Key_F && modifiers == Qt::AltModifier) {
        logOut();
        return true;
    }
    if (page != BookingPage)
        return false;
    if (modifiers == Qt::ControlModifier && key.key() == Qt::Key_C) {
        m_booking->actions().copy();
        return true;
    }
    if (modifiers == Qt::ControlModifier && key.key() == Qt::Key_V) {
        m_booking->actions().paste();
        return true;
    }
    return modifiers == Qt::NoModifier && handleFieldKey(key.key());
}

bool frm_Main::handleFieldKey(int key)
{
    const auto found = std::find(fieldKeys.cbegin(), fieldKeys.cend(), key);
    if (found == fieldKeys.cend())
        return false;
    const int field = int(found - fieldKeys.cbegin());
    if (field <= m_station.settings.MaxFieldIndex)
        m_booking->pressField(field);
    return true;
}

void frm_Main::logOut()
{
    WriteActivityLog(m_station, m_station.CurrentStaff, u"log out"_s);
    QApplication::quit();
}
