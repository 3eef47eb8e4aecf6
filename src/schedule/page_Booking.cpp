#include "schedule/page_Booking.h"

#include "app/Errors.h"
#include "app/Formats.h"
#include "app/RateType.h"
#include "booking/RemarkLog.h"
#include "look/ElidedLabel.h"
#include "look/Look.h"
#include "plan/LayoutPlan.h"
#include "schedule/DayView.h"
#include "schedule/FreeHourNotice.h"
#include "schedule/PlayLists.h"
#include "schedule/SlotActions.h"

#include <QCalendarWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QPushButton>
#include <QTextCharFormat>
#include <QToolButton>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 8;
constexpr int playListWidth = 216;
constexpr int dayChooserWidth = 400;

QLineEdit *hiddenBox(const QString &name, QWidget *parent)
{
    auto *box = new QLineEdit(parent);
    box->setObjectName(name);
    box->hide();
    return box;
}

QLabel *namedLabel(const QString &name)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// A line of text that can be clicked.
class ClickedLabel : public QLabel
{
public:
    explicit ClickedLabel(std::function<void()> clicked) : m_clicked(std::move(clicked)) {}

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            m_clicked();
    }

private:
    std::function<void()> m_clicked;
};

void makeLarge(QLabel *label)
{
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setBold(true);
    label->setFont(font);
}

} // namespace

page_Booking::page_Booking(Station &station, BookingClipboard &clipboard, QWidget *parent)
    : QWidget(parent),
      m_station(station),
      m_clipboard(clipboard),
      m_fieldUnderMouse(hiddenBox(u"Text2"_s, this)),
      m_fieldSelected(hiddenBox(u"txtInfo_FieldSelect"_s, this))
{
    m_fieldSelected->setText(u"0"_s);
    const auto &names = station.settings.FieldDisplayNames;
    m_playLists = new PlayLists({names.cbegin(), names.cbegin() + station.settings.MaxFieldIndex + 1});
    m_playLists->setFixedWidth(playListWidth);
    m_actions = new SlotActions(
        station, clipboard, [this] { return selection(); }, this);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(space, space, space, space);
    layout->setSpacing(space);
    layout->addWidget(makeDayChooser(), 5);
    layout->addWidget(makeGrid(), 8);
    layout->addWidget(m_playLists);
    connectActions();
    setTabOrder(m_calendar, m_grid);
    showClipboard();
}

QWidget *page_Booking::makeDayChooser()
{
    m_plan = new LayoutPlan;
    m_plan->setObjectName(u"LayoutPlan1"_s);
    QSizePolicy fitting(QSizePolicy::Expanding, QSizePolicy::Preferred);
    fitting.setHeightForWidth(true);
    m_plan->setSizePolicy(fitting);
    connect(m_plan, &LayoutPlan::hovered, m_fieldUnderMouse, &QLineEdit::setText);
    connect(m_plan, &LayoutPlan::clicked, this, &page_Booking::selectFieldUnderMouse);

    m_calendar = new QCalendarWidget;
    m_calendar->setObjectName(u"Calendar"_s);
    m_calendar->setGridVisible(true);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setAccessibleName(u"Day"_s);
    Look::applyTo(*m_calendar);
    // A mouse click tells both that the day changed and that it was clicked: one reading answers both.
    m_dayClicked.setSingleShot(true);
    connect(m_calendar, &QCalendarWidget::selectionChanged, &m_dayClicked, qOverload<>(&QTimer::start));
    connect(m_calendar, &QCalendarWidget::clicked, &m_dayClicked, qOverload<>(&QTimer::start));
    connect(&m_dayClicked, &QTimer::timeout, this, [this] {
        setDay(m_calendar->selectedDate());
        RefreshView();
    });

    auto *chooser = new QWidget;
    chooser->setMinimumWidth(dayChooserWidth);
    auto *layout = new QVBoxLayout(chooser);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    layout->addWidget(m_plan);
    layout->addWidget(m_calendar, 1);
    return chooser;
}

QWidget *page_Booking::makeGrid()
{
    m_grid = new DayView;
    m_grid->setObjectName(u"ListView_Book"_s);
    m_grid->setModel(&m_model);
    m_grid->setHistory([this](int row) { return historyOf(row); });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &page_Booking::showSelectedHour,
            Qt::QueuedConnection); // an error window must not open inside the mouse press

    m_unread = namedLabel(u"lbl_Unread"_s);
    m_unread->setText(u"This day could not be read: the rows below are not known to be free."_s);
    m_unread->setAutoFillBackground(true);
    m_unread->setMargin(space);
    QPalette colours = m_unread->palette();
    colours.setColor(QPalette::Window, Look::alert.background);
    colours.setColor(QPalette::WindowText, Look::alert.text);
    m_unread->setPalette(colours);
    m_unread->hide();
    m_notice = new FreeHourNotice;
    connect(m_notice, &FreeHourNotice::entryWanted, this, &page_Booking::waitingEntryWanted);
    m_clipboardLabel = new ElidedLabel;
    m_clipboardLabel->setObjectName(u"lbl_Clipboard"_s);

    auto *column = new QWidget;
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space / 2);
    layout->addWidget(makeHeading());
    layout->addWidget(makeButtons());
    layout->addWidget(m_notice);
    layout->addWidget(m_unread);
    layout->addWidget(m_grid, 1);
    layout->addWidget(m_clipboardLabel);
    return column;
}

QWidget *page_Booking::makeHeading()
{
    m_fieldName = new ElidedLabel;
    m_fieldName->setObjectName(u"lbl_FieldName"_s);
    makeLarge(m_fieldName);
    m_fieldInfo = namedLabel(u"lbl_FieldInfo"_s);
    m_dayLabel = namedLabel(u"lbl_Day"_s);
    m_time = new ClickedLabel([this] { Q_EMIT clockClicked(); });
    m_time->setObjectName(u"txt_Time"_s);
    m_time->setTextFormat(Qt::PlainText);
    m_time->setToolTip(u"Click to look for changes of players at the coming hour"_s);
    makeLarge(m_time);
    auto *heading = new QWidget;
    auto *layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2 * space);
    layout->addWidget(m_fieldName);
    layout->addWidget(m_fieldInfo);
    layout->addWidget(m_dayLabel, 1);
    layout->addWidget(m_time);
    return heading;
}

QWidget *page_Booking::makeButtons()
{
    auto *bar = new QWidget;
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    const auto add = [&](const QString &name, const QString &text, const QString &icon, auto &&handler) {
        auto *button = new QPushButton(Look::icon(icon), text);
        button->setObjectName(name);
        connect(button, &QPushButton::clicked, m_actions, std::forward<decltype(handler)>(handler));
        layout->addWidget(button);
    };
    add(u"btn_Book"_s, u"&Book"_s, u"book"_s, &SlotActions::book);
    add(u"btn_Clear"_s, u"C&lear"_s, u"clear"_s, &SlotActions::clear);
    add(u"btn_AddEntry"_s, u"&Waiting list"_s, u"add-entry"_s, &SlotActions::addWaitingEntry);
    layout->addStretch(1);
    auto *several = new QToolButton;
    several->setObjectName(u"btn_SelectSeveral"_s);
    several->setText(u"Select se&veral"_s);
    several->setCheckable(true);
    several->setToolTip(u"Every tap on a row selects or deselects it"_s);
    connect(several, &QToolButton::toggled, m_grid, &DayView::setTapSelects);
    layout->addWidget(several);
    auto *refresh = new QToolButton;
    refresh->setObjectName(u"btn_Refresh"_s);
    refresh->setIcon(Look::icon(u"refresh"_s));
    refresh->setToolTip(u"Read the day again"_s);
    refresh->setAccessibleName(refresh->toolTip());
    connect(refresh, &QToolButton::clicked, this, &page_Booking::RefreshView);
    layout->addWidget(refresh);
    return bar;
}

void page_Booking::connectActions()
{
    connect(m_grid, &DayView::bookingWanted, m_actions, &SlotActions::book);
    connect(m_grid, &DayView::menuWanted, this, [this](QPoint position) { m_actions->menu()->popup(position); });
    connect(m_actions, &SlotActions::dayTouched, this, &page_Booking::afterOperation);
    connect(m_actions, &SlotActions::waitingListTouched, this, &page_Booking::waitingListTouched);
    connect(m_actions, &SlotActions::clipboardChanged, this, &page_Booking::clipboardChanged);
    connect(m_actions, &SlotActions::slotsFreed, this, [this](const std::vector<SlotKey> &freed) {
        guarded(m_station.prompts, ErrorCode::Database, [&] { m_notice->announce(m_station, freed); });
    });
}

int page_Booking::field() const
{
    return m_fieldSelected->text().toInt();
}

DaySelection page_Booking::selection() const
{
    return {m_day, field(), m_model.rows(), m_grid->selectedRowNumbers(), m_grid->currentRowNumber()};
}

void page_Booking::RefreshViewInit()
{
    m_model.build(m_station.hours());
    showHeading();
}

void page_Booking::RefreshView()
{
    read(false);
}

bool page_Booking::afterOperation(bool ok)
{
    return read(!ok);
}

bool page_Booking::read(bool quietly)
{
    DaySchedule schedule{emptyDay(m_station.hours()), {}, {}, {}};
    const int hourRow = m_grid->currentIndex().row();
    QString hourPlayers;
    const auto readNow = [&] {
        schedule = readDay(m_station, m_day, field());
        if (hourRow >= 0)
            hourPlayers = RefreshList(m_station.database, m_day, schedule.rows.at(std::size_t(hourRow)).hour);
    };
    bool ok = false;
    if (quietly) {
        try {
            readNow();
            ok = true;
        } catch (const DbError &) {
            // The operation before has told of it.
        }
    } else {
        ok = guarded(m_station.prompts, ErrorCode::Database, readNow);
    }
    m_unread->setVisible(!ok);
    m_histories.clear();
    m_historyReadable = ok;
    m_playLists->showDay(schedule);
    if (hourRow >= 0)
        m_playLists->showHour(schedule.rows.at(std::size_t(hourRow)).hourText(), hourPlayers);
    if (ok)
        showRows(std::move(schedule.rows));
    else
        m_model.showUnread();
    showHeading();
    Q_EMIT dayRead(ok);
    return ok;
}

void page_Booking::showRows(std::vector<DayRow> rows)
{
    const QDateTime now = m_station.now();
    const WorkingHours hours = m_station.hours();
    std::vector<bool> past;
    past.reserve(rows.size());
    for (const DayRow &row : rows)
        past.push_back(hoursUntil(now, m_day, row.hourText(), hours) < 0);
    m_hourShown = now.time().hour();
    m_model.show(std::move(rows), past, rowOfClockHour(hours, m_hourShown));
}

void page_Booking::showHeading()
{
    const bool isField = field() <= m_station.settings.MaxFieldIndex;
    m_fieldName->showText(isField ? m_station.settings.FieldDisplayNames.at(std::size_t(field()))
                                  : u"No field is set up"_s);
    m_fieldInfo->setText(isField ? u"Field Number "_s + QString::number(field() + 1)
                                 : QString()); // people count from 1
    const QDate day = QDate::fromString(m_day, Qt::ISODate);
    m_dayLabel->setText(QLocale::c().toString(day, u"ddd d MMMM yyyy"_s));
}

void page_Booking::showSelectedHour()
{
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid() || m_day.isEmpty())
        return;
    const DayRow row = m_model.rows().at(std::size_t(current.row()));
    QString players;
    if (m_unread->isHidden()) // otherwise staff know, and another window at every row would not help them
        guarded(m_station.prompts, ErrorCode::Database,
                [&] { players = RefreshList(m_station.database, m_day, row.hour); });
    m_playLists->showHour(row.hourText(), players);
}

QString page_Booking::historyOf(int row)
{
    const auto known = m_histories.find(row);
    if (known != m_histories.cend())
        return known->second;
    if (!m_historyReadable)
        return {};
    QString history;
    m_historyReadable = guarded(m_station.prompts, ErrorCode::Database, [&] {
        const DayRow &shown = m_model.rows().at(std::size_t(row));
        history = slotHistory(m_station.database, {m_day, shown.hourText(), field()});
        m_histories.emplace(row, history);
    });
    return history;
}

void page_Booking::setDay(QDate day)
{
    m_day = sqlDate(day);
    const QSignalBlocker blocker(m_calendar);
    m_calendar->setSelectedDate(day);
    QTextCharFormat today;
    today.setFontWeight(QFont::Bold);
    today.setBackground(Look::shared.background);
    m_calendar->setDateTextFormat({}, {});
    m_calendar->setDateTextFormat(m_station.now().date(), today);
}

void page_Booking::pressField(int field)
{
    m_fieldUnderMouse->setText(QString::number(field));
    selectFieldUnderMouse();
}

void page_Booking::selectFieldUnderMouse()
{
    const int field = clickedField(m_fieldUnderMouse->text(), m_station.settings.MaxFieldIndex);
    if (field < 0)
        return;
    m_fieldSelected->setText(QString::number(field));
    m_plan->setSelectedField(field);
    showHeading();
    RefreshView();
}

void page_Booking::tick(const QString &timeText)
{
    m_time->setText(timeText);
    if (m_unread->isHidden() && m_station.now().time().hour() != m_hourShown && m_hourShown >= 0)
        showRows(m_model.rows());
}

void page_Booking::showClipboard()
{
    constexpr int widestName = 150;
    const ClipboardSource source = m_clipboard.source();
    if (source == ClipboardSource::Nothing) {
        m_clipboardLabel->showText(u"Nothing to paste"_s);
        return;
    }
    const auto nameOf = [this](int field) { return m_station.settings.FieldDisplayNames.at(std::size_t(field)); };
    const bool waiting = source == ClipboardSource::WaitingList;
    const Booker &booker = waiting ? m_clipboard.cut.booker : m_clipboard.copiedBooker;
    const QString from = waiting ? u"from the waiting list of "_s + nameOf(m_clipboard.cut.field) + u", "_s +
                                       m_clipboard.cut.dateTimeText.left(16)
                                 : u"copied from "_s + nameOf(m_clipboard.copied->field) + u", "_s +
                                       m_clipboard.copied->day + u' ' + m_clipboard.copied->hourText;
    const auto describe = [&](const QString &name) {
        return u"To paste: "_s + name + u" · "_s + RateType::inWords(booker.rateType) + u" · "_s + from;
    };
    // A long name leaves room for the rate and where it is from; the tip says all of it.
    m_clipboardLabel->showText(
        describe(m_clipboardLabel->fontMetrics().elidedText(booker.name, Qt::ElideRight, widestName)));
    m_clipboardLabel->setToolTip(u"<qt>"_s + describe(booker.name).toHtmlEscaped());
}

void page_Booking::addSpecialGroup(int group)
{
    m_playLists->addSpecialGroup(group);
    m_actions->addSpecialGroup(group);
}
