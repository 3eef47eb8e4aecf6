#include "schedule/page_Booking.h"

#include "app/Errors.h"
#include "look/Look.h"
#include "schedule/ClipboardLine.h"
#include "schedule/DayChooser.h"
#include "schedule/DayHeading.h"
#include "schedule/DayView.h"
#include "schedule/FreeHourNotice.h"
#include "schedule/PlayLists.h"
#include "schedule/SlotActions.h"
#include "schedule/SlotBar.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 8;
constexpr int playListWidth = 216;
constexpr int againMilliseconds = 50; // until a reading that found the database busy is tried again

// The letter keys follow the top letter row from right to left, so that the fields lie under one hand.
constexpr std::array fieldKeys{Qt::Key_P, Qt::Key_O, Qt::Key_I, Qt::Key_U, Qt::Key_Y,
                               Qt::Key_T, Qt::Key_R, Qt::Key_E, Qt::Key_W};

} // namespace

page_Booking::page_Booking(Station &station, BookingClipboard &clipboard, QWidget *parent)
    : Page(parent),
      m_station(station),
      m_clipboard(clipboard),
      m_histories(station),
      m_chooser(new DayChooser(station)),
      m_heading(new DayHeading)
{
    setObjectName(u"page_Booking"_s);
    m_playLists = new PlayLists(station.settings.namesOfFields());
    m_playLists->setCurrentIndex(1);
    m_playLists->setFixedWidth(playListWidth);
    m_actions = new SlotActions(
        station, clipboard, [this] { return selection(); }, this);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(space, space, space, space);
    layout->setSpacing(space);
    layout->addWidget(m_chooser, 5);
    layout->addWidget(makeGrid(), 8);
    layout->addWidget(m_playLists);
    connectActions();
    m_again.setSingleShot(true);
    m_again.setInterval(againMilliseconds);
    connect(&m_again, &QTimer::timeout, this, &page_Booking::RefreshView);
    setTabOrder(m_chooser->calendar(), m_grid);
    showClipboard();
}

QWidget *page_Booking::makeGrid()
{
    m_grid = new DayView;
    m_grid->setObjectName(u"ListView_Book"_s);
    m_grid->setModel(&m_model);
    m_grid->setHistory([this](int row) {
        return m_histories.of(row, {m_shown.day, m_model.rows().at(std::size_t(row)).hourText(), m_shown.field});
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &page_Booking::showSelectedHour,
            Qt::QueuedConnection); // an error window must not open inside the mouse press

    m_unread = new QLabel(u"This day could not be read: the rows below are not known to be free."_s);
    m_unread->setObjectName(u"lbl_Unread"_s);
    m_unread->setTextFormat(Qt::PlainText);
    m_unread->setMargin(space);
    Look::paint(*m_unread, Look::alert);
    m_unread->hide();
    m_notice = new FreeHourNotice;
    connect(m_notice, &FreeHourNotice::entryWanted, this, &page_Booking::takeWaitingEntry);
    m_clipboardLine = new ClipboardLine;
    auto *bar = new SlotBar(m_actions->entries());
    connect(bar, &SlotBar::severalToggled, m_grid, &DayView::setTapSelects);
    connect(bar, &SlotBar::readingWanted, this, &page_Booking::RefreshView);

    auto *column = new QWidget;
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space / 2);
    layout->addWidget(m_heading);
    layout->addWidget(bar);
    layout->addWidget(m_notice);
    layout->addWidget(m_unread);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_clipboardLine);
    return column;
}

void page_Booking::connectActions()
{
    connect(m_chooser, &DayChooser::planRead, this, &page_Booking::planRead);
    connect(m_chooser, &DayChooser::dayChosen, this, &page_Booking::RefreshView);
    connect(m_chooser, &DayChooser::fieldChosen, this, [this] {
        showHeading();
        RefreshView();
    });
    connect(m_chooser, &DayChooser::alertsRaised, this, &page_Booking::follow);
    connect(m_heading, &DayHeading::clockClicked, m_chooser, &DayChooser::lookForAlerts);
    connect(m_grid, &DayView::bookingWanted, m_actions, &SlotActions::book);
    connect(m_grid, &DayView::menuWanted, this, [this](QPoint position) { m_actions->menu()->popup(position); });
    connect(m_actions, &SlotActions::dayTouched, this, &page_Booking::afterOperation);
    connect(m_actions, &SlotActions::dayTouched, this, &page_Booking::showClipboard);
    connect(m_actions, &SlotActions::waitingListTouched, this, &page_Booking::waitingListTouched);
    connect(m_actions, &SlotActions::paymentWanted, this, &page_Booking::paymentWanted);
    connect(m_actions, &SlotActions::invoiceWanted, this, &page_Booking::invoiceWanted);
    connect(m_actions, &SlotActions::clipboardChanged, this, &page_Booking::showClipboard);
    connect(m_actions, &SlotActions::slotsFreed, this, [this](const std::vector<SlotKey> &freed) {
        guarded(m_station.prompts, ErrorCode::Database, [&] { m_notice->announce(m_station, freed); });
    });
}

int page_Booking::field() const
{
    return m_chooser->field();
}

DaySelection page_Booking::selection() const
{
    return {m_shown.day, m_shown.field, m_model.rows(), m_grid->selectedRowNumbers(), m_grid->currentRowNumber()};
}

void page_Booking::loadPlan()
{
    m_chooser->loadPlan();
}

void page_Booking::setDay(QDate day)
{
    m_chooser->setDay(day);
}

void page_Booking::RefreshViewInit()
{
    m_model.build(m_station.hours());
    m_shown = {m_chooser->day(), field()};
    showHeading();
}

void page_Booking::RefreshView()
{
    read(Reading::Asked);
}

bool page_Booking::afterOperation(bool ok)
{
    return read(ok ? Reading::Asked : Reading::Told);
}

void page_Booking::focusGrid()
{
    m_grid->setFocus();
}

bool page_Booking::follow()
{
    // Nothing changes under a window or menu that is open over the page.
    return !QApplication::activeModalWidget() && !QApplication::activePopupWidget() && read(Reading::ByItself);
}

bool page_Booking::read(Reading reading)
{
    if (m_station.database.isWaiting()) {
        if (reading != Reading::ByItself)
            m_again.start();
        return false;
    }
    const ShownDay wanted{m_chooser->day(), field()};
    DaySchedule schedule{emptyDay(m_station.hours()), {}, {}, {}};
    const int hourRow = m_grid->currentIndex().row();
    QString hourPlayers;
    const auto readNow = [&] {
        schedule = readDay(m_station, wanted.day, wanted.field);
        if (hourRow >= 0)
            hourPlayers = RefreshList(m_station.database, wanted.day, schedule.rows.at(std::size_t(hourRow)).hour);
    };
    const bool ok = reading == Reading::Asked ? guarded(m_station.prompts, ErrorCode::Database, readNow)
                                              : quietly(m_station.database, readNow);
    // What nobody asked for leaves the page as it was when it fails: the header tells since when.
    if (!ok && reading == Reading::ByItself)
        return false;
    // Another field or day was chosen while the answer was waited for: its own reading follows.
    if (wanted != ShownDay{m_chooser->day(), field()})
        return false;
    m_shown = wanted;
    m_unread->setVisible(!ok);
    m_histories.forget(ok);
    m_playLists->showDay(schedule);
    if (hourRow >= 0)
        m_playLists->showHour(schedule.rows.at(std::size_t(hourRow)).hourText(), hourPlayers);
    if (ok) {
        m_hourRead = m_station.now().time().hour();
        showRows(std::move(schedule.rows));
    } else {
        m_model.showUnread();
    }
    showHeading();
    if (ok && reading == Reading::Asked)
        m_chooser->refreshPlan();
    else
        m_chooser->refreshPlanQuietly();
    if (ok)
        Q_EMIT dayRead();
    return ok;
}

void page_Booking::showRows(std::vector<DayRow> rows)
{
    const QDateTime now = m_station.now();
    const WorkingHours hours = m_station.hours();
    const QString &day = m_shown.day;
    std::vector<bool> past;
    past.reserve(rows.size());
    for (const DayRow &row : rows)
        past.push_back(hoursUntil(now, day, row.hourText(), hours) < 0);
    m_hourShown = now.time().hour();
    m_model.show(std::move(rows), past, rowOfClockHour(hours, m_hourShown));
}

void page_Booking::showHeading()
{
    if (field() <= m_station.settings.MaxFieldIndex)
        m_heading->showField(m_station.settings.fieldName(field()), field());
    else
        m_heading->showNoField();
    m_heading->showDay(m_chooser->day());
}

void page_Booking::showSelectedHour()
{
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid() || m_shown.day.isEmpty() || m_station.database.isWaiting())
        return;
    const DayRow row = m_model.rows().at(std::size_t(current.row()));
    QString players;
    if (m_unread->isHidden()) // otherwise staff know, and another wait at every row would not help them
        quietly(m_station.database, [&] { players = RefreshList(m_station.database, m_shown.day, row.hour); });
    m_playLists->showHour(row.hourText(), players);
}

void page_Booking::refreshPlan()
{
    m_chooser->refreshPlan();
}

void page_Booking::showTime(const QString &timeText)
{
    m_heading->showTime(timeText);
    const QTime now = m_station.now().time();
    // At a full hour play lists and marks move; without the database the marks at least, and the rest when it is back.
    const bool mayRead = m_station.database.isReachable() || now.hour() != m_hourShown;
    if (m_unread->isHidden() && m_hourShown >= 0 && now.hour() != m_hourRead && mayRead && !follow() &&
        now.hour() != m_hourShown)
        showRows(m_model.rows());
    m_chooser->goOnTo(now);
}

bool page_Booking::takeKey(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier && event.key() == Qt::Key_C) {
        m_actions->copy();
        return true;
    }
    if (modifiers == Qt::ControlModifier && event.key() == Qt::Key_V) {
        m_actions->paste();
        return true;
    }
    const auto found = std::find(fieldKeys.cbegin(), fieldKeys.cend(), event.key());
    if (modifiers != Qt::NoModifier || found == fieldKeys.cend())
        return false;
    m_chooser->pressField(int(found - fieldKeys.cbegin()));
    return true;
}

void page_Booking::takeWaitingEntry(const QString &id)
{
    guarded(m_station.prompts, ErrorCode::Database, [&] { cutWaitingEntry(m_station, m_clipboard, id); });
    showClipboard();
}

void page_Booking::showClipboard()
{
    const auto &kept = m_station.keptCustomer;
    m_clipboardLine->showClipboard(m_clipboard, m_station.settings, kept ? kept->name : QString());
}

void page_Booking::addSpecialGroup(int group)
{
    m_actions->addSpecialGroup(group);
}

QString page_Booking::day() const
{
    return m_chooser->day();
}
