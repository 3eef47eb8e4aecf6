#include "booking/page_WaitingList.h"

#include "app/Errors.h"
#include "app/Formats.h"
#include "booking/SlotWords.h"
#include "booking/frm_WaitingList.h"
#include "look/Look.h"
#include "look/MenuEntry.h"
#include "look/RowsTable.h"
#include "look/WrappedLabel.h"
#include "plan/LayoutPlan.h"

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QStandardItem>

using namespace Qt::StringLiterals;

page_WaitingList::page_WaitingList(Station &station, BookingClipboard &clipboard, QWidget *parent)
    : Page(parent), m_station(station), m_clipboard(clipboard), m_day(sqlDate(station.now().date()))
{
    setObjectName(u"page_WaitingList"_s);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(16);
    layout->addWidget(makeDayAndPlan(), 2);
    layout->addWidget(makeList(), 3);
    setDay(station.now().date());
}

QWidget *page_WaitingList::makeDayAndPlan()
{
    auto *side = new QWidget(this);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    m_calendar = new QCalendarWidget(side);
    m_calendar->setObjectName(u"Calendar2"_s);
    m_calendar->setAccessibleName(u"Day of the waiting list"_s);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setGridVisible(false);
    Look::applyTo(*m_calendar);
    m_calendar->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    layout->addWidget(m_calendar);
    m_plan = new LayoutPlan;
    m_plan->setObjectName(u"LayoutPlan3"_s);
    m_plan->setSelectedField(m_field);
    layout->addWidget(m_plan, 1);
    connect(m_plan, &LayoutPlan::clicked, this, &page_WaitingList::selectField);
    // A mouse click on another day tells both; the arrow keys tell the first, a click on the same day the second. One
    // reading answers both.
    m_dayClicked.setSingleShot(true);
    connect(m_calendar, &QCalendarWidget::selectionChanged, &m_dayClicked, qOverload<>(&QTimer::start));
    connect(m_calendar, &QCalendarWidget::clicked, &m_dayClicked, qOverload<>(&QTimer::start));
    connect(&m_dayClicked, &QTimer::timeout, this, [this] { takeDay(m_calendar->selectedDate()); });
    return side;
}

QWidget *page_WaitingList::makeList()
{
    auto *side = new QWidget(this);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    m_heading = wrappedLabel(u"lbl_WaitHeading"_s, {}, 1.2);
    m_list = new RowsTable(u"ListView_Wait"_s, u"Who waits for this field on this day"_s,
                           {u"Entry"_s, u"Name"_s, u"Telephone"_s, u"Wanted slot"_s});
    m_list->fitColumns({u"000000"_s, QString(), u"+00 00000 000000"_s, u"0000-00-00 00:00:00"_s});
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_empty = wrappedLabel(u"lbl_WaitEmpty"_s, {});
    m_empty->setAlignment(Qt::AlignCenter);
    m_listOrEmpty = new QStackedWidget;
    m_listOrEmpty->addWidget(m_list);
    m_listOrEmpty->addWidget(m_empty);
    layout->addWidget(m_heading);
    layout->addWidget(m_listOrEmpty, 1);
    layout->addLayout(makeMenuAndButtons());
    connect(m_list, &RowsTable::customContextMenuRequested, this, &page_WaitingList::showMenu);
    return side;
}

QLayout *page_WaitingList::makeMenuAndButtons()
{
    const MenuEntry add{{}, u"&Add an entry…"_s, {}, [this] { addEntry(); }, {u"btn_AddEntry2"_s}};
    MenuEntry cut{u"mnu_Cut"_s, u"&Take for pasting on the grid"_s, {}, [this] { cutEntry(); }, {u"btn_CutEntry"_s}};
    cut.key = QKeySequence::Cut;
    MenuEntry clear{u"mnu_ClearEntry"_s, u"&Delete the entry…"_s, {}, [this] { clearEntry(); }, {u"btn_ClearEntry"_s}};
    clear.key = Qt::Key_Delete;
    const std::vector<MenuEntry> entries{add, cut, {}, clear};
    m_menu = new QMenu(this);
    m_menu->setObjectName(u"mnu_WaitList"_s);
    fillMenu(*m_menu, entries);
    m_list->addActions(m_menu->actions());

    auto *layout = new QHBoxLayout;
    layout->setSpacing(8);
    for (QPushButton *button : makeButtons(entries))
        layout->addWidget(button);
    layout->insertStretch(2);
    return layout;
}

void page_WaitingList::loadPlan()
{
    m_plan->load(u"WaitingList"_s, u"HotSpot2"_s, m_station.settings);
}

void page_WaitingList::setDay(QDate day)
{
    const QSignalBlocker quiet(m_calendar);
    m_calendar->setSelectedDate(day);
    m_day = sqlDate(day);
    showHeading();
}

void page_WaitingList::takeDay(QDate day)
{
    setDay(day);
    RefreshWaitList();
}

void page_WaitingList::selectField(int field)
{
    if (field < 0 || field > m_station.settings.MaxFieldIndex)
        return;
    m_field = field;
    m_plan->setSelectedField(field);
    showHeading();
    RefreshWaitList();
}

void page_WaitingList::showHeading()
{
    m_heading->setText(u"Waiting for "_s + m_station.settings.fieldName(m_field) + u", "_s + dayInWords(m_day));
}

void page_WaitingList::RefreshWaitList()
{
    if (m_reading || m_station.database.isWaiting()) {
        m_dayClicked.start(); // what was chosen meanwhile is read after it
        return;
    }
    const QScopedValueRollback<bool> reading(m_reading, true);
    guarded(m_station.prompts, ErrorCode::Database, [this] { read(); });
}

// While another page is shown the list is not: it is read when it comes to the front.
bool page_WaitingList::follow()
{
    if (!isVisible())
        return true;
    std::vector<WaitingEntry> entries;
    if (!quietly(m_station.database, [&] { entries = readWaitingList(m_station.database, m_day, m_field); }))
        return false;
    const QString selected = selectedId();
    m_list->clearRows();
    showEntries(entries, selected);
    return true;
}

void page_WaitingList::read()
{
    const QString selected = selectedId();
    m_list->clearRows();
    m_empty->setText(u"The waiting list could not be read."_s);
    m_listOrEmpty->setCurrentWidget(m_empty);
    showEntries(readWaitingList(m_station.database, m_day, m_field), selected);
}

void page_WaitingList::showEntries(const std::vector<WaitingEntry> &entries, const QString &selected)
{
    m_empty->setText(u"Nobody is waiting for this field on this day."_s);
    m_listOrEmpty->setCurrentWidget(entries.empty() ? static_cast<QWidget *>(m_empty) : m_list);
    for (const WaitingEntry &entry : entries) {
        const auto cells = m_list->addRow({entry.id, entry.booker.name, entry.booker.telephone, entry.dateTimeText});
        if (entry.id == selected)
            m_list->selectRow(cells.first()->row());
    }
}

QString page_WaitingList::selectedId() const
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    return rows.isEmpty() ? QString() : rows.first().data().toString();
}

void page_WaitingList::showMenu(QPoint position)
{
    const QModelIndex index = m_list->indexAt(position);
    if (index.isValid() && !m_list->selectionModel()->isSelected(index))
        m_list->selectRow(index.row());
    m_menu->popup(m_list->viewport()->mapToGlobal(position));
}

void page_WaitingList::addEntry()
{
    if (m_station.settings.MaxFieldIndex < 0) {
        m_station.prompts.inform(u"No field is set up: nobody can wait for one."_s);
        return;
    }
    guarded(m_station.prompts, ErrorCode::LoadingForm, [this] {
        const auto staff =
            m_station.prompts.verifyStaff(u"Put on the waiting list of "_s + m_station.settings.fieldName(m_field));
        if (!staff)
            return;
        frm_WaitingList window(m_station, staff->staffName, m_day, m_field, this);
        if (window.exec() == QDialog::Accepted)
            RefreshWaitList();
    });
}

void page_WaitingList::clearEntry()
{
    const QString id = selectedId();
    if (id.isEmpty()) {
        m_station.prompts.inform(u"Please select the entry to delete."_s);
        return;
    }
    bool deleted = false;
    guarded(m_station.prompts, ErrorCode::Database, [&] { deleted = deleteWaitingEntry(m_station, id); });
    if (deleted)
        RefreshWaitList();
}

void page_WaitingList::cutEntry()
{
    bool cut = false;
    guarded(m_station.prompts, ErrorCode::Database,
            [&] { cut = cutWaitingEntry(m_station, m_clipboard, selectedId()); });
    Q_EMIT clipboardChanged();
    if (cut)
        Q_EMIT entryCut();
}
