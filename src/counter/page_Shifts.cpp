#include "counter/page_Shifts.h"

#include "app/Errors.h"
#include "app/SqlText.h"
#include "app/Station.h"
#include "counter/FiguresTable.h"
#include "counter/ShiftActions.h"
#include "look/Look.h"
#include "look/WrappedLabel.h"

#include <QGridLayout>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStandardItem>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int daysShown = 30;

void alignFigures(RowsTable &table, int firstColumn)
{
    for (int column = firstColumn; column < table.model()->columnCount(); ++column)
        table.model()->setHeaderData(column, Qt::Horizontal, int(Qt::AlignRight | Qt::AlignVCenter),
                                     Qt::TextAlignmentRole);
}

QList<QStandardItem *> addAligned(RowsTable &table, const QStringList &texts, int firstFigure)
{
    const auto cells = table.addRow(texts);
    for (int column = firstFigure; column < cells.size(); ++column)
        cells[column]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return cells;
}

} // namespace

page_Shifts::page_Shifts(Station &station, const TillActions &till, QWidget *parent)
    : Page(parent), m_station(station), m_actions(new ShiftActions(station, till, this))
{
    setObjectName(u"page_Shifts"_s);
    setProperty("touch", true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 8, 16, 16);
    layout->setSpacing(24);
    layout->addWidget(makePresent(), 2);
    layout->addWidget(makeEnded(), 3);
    connect(m_actions, &ShiftActions::recorded, this, &page_Shifts::refresh);
}

QWidget *page_Shifts::makePresent()
{
    m_heading = wrappedLabel(u"lbl_Shift"_s, {}, 1.4);
    m_time = new QLabel;
    m_time->setObjectName(u"txt_Time4"_s);
    m_note = wrappedLabel(u"lbl_ShiftNote"_s, u"The figures could not be read. What is shown may be old."_s);
    m_note->setMargin(8);
    Look::paint(*m_note, Look::shared);
    m_note->hide();
    m_figures = new FiguresTable(u"ListView_ShiftFigures"_s);

    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto *head = new QHBoxLayout;
    head->addWidget(m_heading, 1);
    head->addWidget(m_time);
    layout->addLayout(head);
    layout->addWidget(m_note);
    layout->addWidget(m_figures, 1);
    layout->addLayout(makeButtons());
    return side;
}

QLayout *page_Shifts::makeButtons()
{
    struct Entry
    {
        QString name;
        QString icon;
        QString caption;
        QString tip;
        std::function<void()> handler;
    };
    const std::vector<Entry> entries{
        {u"btn_EndMorningShift"_s, u"clock"_s, u"End &morning shift…"_s,
         u"Counts the drawer, records the end of the morning shift and logs out."_s,
         [this] { m_actions->endMorningShift(); }},
        {u"btn_EndEveningShift"_s, u"clock"_s, u"End &evening shift…"_s,
         u"Counts the drawer, records the end of the evening shift and logs out."_s,
         [this] { m_actions->endEveningShift(); }},
        {u"btn_HandOver"_s, u"membership"_s, u"&Hand over…"_s,
         u"Gives the counter to another staff member, with the money counted."_s, [this] { m_actions->handOver(); }},
        {u"btn_CollectCash"_s, u"drawer"_s, u"&Collect cash…"_s,
         u"Lets an administrator take cash out of the drawer and logs the amount."_s,
         [this] { m_actions->collectCash(); }},
        {u"btn_InterimSlip"_s, u"receipt"_s, u"&Interim slip…"_s,
         u"Prints the figures of this shift so far on receipt paper; the shift goes on."_s,
         [this] { m_actions->printInterimSlip(); }},
        {u"btn_CounterReport"_s, u"summary"_s, u"Counter &report"_s,
         u"Opens this counter's report in the web browser."_s, [this] { m_actions->openReport(); }},
        {u"btn_MailShift"_s, u"mail"_s, u"Mai&l the figures…"_s,
         u"Opens a mail with the figures of this shift so far."_s, [this] { mail(); }},
    };
    constexpr int columns = 2;
    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    for (const Entry &entry : entries) {
        auto *button = new QPushButton(Look::icon(entry.icon), entry.caption);
        button->setObjectName(entry.name);
        button->setToolTip(entry.tip);
        connect(button, &QPushButton::clicked, this, entry.handler);
        grid->addWidget(button, grid->count() / columns, grid->count() % columns);
    }
    return grid;
}

QWidget *page_Shifts::makeEnded()
{
    m_shifts = new RowsTable(u"ListView_Shifts"_s, u"Ended shifts"_s,
                             {u"Ended"_s, u"Shift"_s, u"By"_s, u"Counted"_s, u"Float"_s, u"Sales"_s});
    m_shifts->fitColumns(
        {u"0000-00-00 00:00"_s, u"mornings"_s, QString(), u"000000.00"_s, u"00000.00"_s, u"000000.00"_s});
    alignFigures(*m_shifts, 3);
    m_stock = new RowsTable(u"ListView_StockMoves"_s, u"Stock of the shift"_s,
                            {u"Item"_s, u"Before"_s, u"After"_s, u"Went out"_s, u"Sold"_s, u"Not sold"_s});
    m_stock->fitColumns({QString(), u"000000"_s, u"000000"_s, u"Went out"_s, u"000000"_s, u"Not sold"_s});
    alignFigures(*m_stock, 1);
    m_stockHeading = wrappedLabel(u"lbl_Stock"_s, {}, 1.2);
    m_slip = new QPushButton(Look::icon(u"receipt"_s), u"&Print its slip…"_s);
    m_slip->setObjectName(u"btn_ShiftSlip"_s);
    m_slip->setToolTip(u"Prints the figures of the selected shift on receipt paper."_s);
    connect(m_slip, &QPushButton::clicked, this, [this] {
        if (const EndedShift *shift = selected())
            m_actions->printSlip(*shift);
    });
    connect(m_shifts->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &page_Shifts::showStock);

    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    auto *head = new QHBoxLayout;
    head->addWidget(wrappedLabel(u"lbl_Ended"_s, sql(u"Shifts of the last %1 days"_s, daysShown), 1.2), 1);
    head->addWidget(m_slip);
    layout->addLayout(head);
    layout->addWidget(m_shifts, 2);
    layout->addWidget(m_stockHeading);
    layout->addWidget(m_stock, 3);
    return side;
}

void page_Shifts::refresh()
{
    m_note->setVisible(!quietly(m_station.database, [this] { read(); }));
}

void page_Shifts::read()
{
    const auto last = lastShift(m_station);
    const ShiftFigures figures = shiftFigures(m_station, last ? last->ended : QString(), sqlDateTime(m_station.now()));
    std::vector<EndedShift> ended = endedShifts(m_station, daysShown);
    m_figures->showFigures(figures, last ? last->cashFloat : 0);
    m_heading->setText(sql(u"Counter %1, served by %2"_s, int(m_station.settings.ThisCounter), m_station.CurrentStaff));
    m_ended = std::move(ended);
    showEnded();
}

void page_Shifts::showEnded()
{
    const QSignalBlocker quiet(m_shifts->selectionModel());
    m_shifts->clearRows();
    for (const EndedShift &shift : m_ended)
        addAligned(*m_shifts,
                   {shift.ended.left(16), shift.name, shift.staff, moneyText(shift.money), moneyText(shift.cashFloat),
                    moneyText(shift.sales)},
                   3);
    const auto wanted = std::ranges::find(m_ended, m_wanted, &EndedShift::id);
    m_shifts->selectRow(wanted == m_ended.end() ? 0 : int(wanted - m_ended.begin()));
    showStock();
}

const EndedShift *page_Shifts::selected() const
{
    const int row = m_shifts->currentIndex().row();
    return row < 0 || row >= int(m_ended.size()) ? nullptr : &m_ended[std::size_t(row)];
}

const EndedShift *page_Shifts::beforeSelected() const
{
    const int row = m_shifts->currentIndex().row() + 1;
    return row < 1 || row >= int(m_ended.size()) ? nullptr : &m_ended[std::size_t(row)];
}

void page_Shifts::showStock()
{
    m_stock->clearRows();
    const EndedShift *shift = selected();
    m_slip->setEnabled(shift != nullptr);
    m_wanted = shift && shift != m_ended.data() ? shift->id : 0; // the latest one gives way to a later one
    const EndedShift *before = beforeSelected();
    if (!shift || !before) {
        m_stockHeading->setText(shift ? u"No shift before this one is known to compare its stock with."_s
                                      : u"No shift was ended yet."_s);
        return;
    }
    m_stockHeading->setText(sql(u"Goods between %1 and %2"_s, before->ended.left(16), shift->ended.left(16)));
    const bool isRead = quietly(m_station.database, [&] {
        for (const StockMove &move : stockMoves(m_station, *before, *shift)) {
            const auto cells = addAligned(*m_stock,
                                          {move.item, plainNumber(move.before), plainNumber(move.after),
                                           plainNumber(move.gone()), plainNumber(move.sold),
                                           move.unexplained() == 0 ? QString() : plainNumber(move.unexplained())},
                                          1);
            if (move.unexplained() == 0)
                continue;
            cells.back()->setBackground(Look::shared.background);
            cells.back()->setForeground(Look::shared.text);
        }
    });
    if (!isRead)
        m_stockHeading->setText(u"The goods of this shift could not be read."_s);
}

void page_Shifts::mail()
{
    const QString text = m_actions->interimText();
    if (!text.isEmpty())
        Q_EMIT mailWanted(sql(u"Shift figures of counter %1"_s, int(m_station.settings.ThisCounter)), text);
}

void page_Shifts::showTime(const QString &timeText)
{
    m_time->setText(timeText);
}
