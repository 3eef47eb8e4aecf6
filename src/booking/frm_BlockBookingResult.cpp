#include "booking/frm_BlockBookingResult.h"

#include "booking/SlotWords.h"
#include "look/Look.h"
#include "look/RowsTable.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStandardItem>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString countsText(const std::vector<BlockBookingHour> &results, std::size_t planned)
{
    const auto booked = std::count_if(results.begin(), results.end(), [](const BlockBookingHour &hour) {
        return hour.outcome == BookingOutcome::Booked;
    });
    const auto tried = qsizetype(results.size());
    const auto all = qsizetype(planned);
    const QString counts = QString::number(booked) + u" of "_s + QString::number(all) +
                           (all == 1 ? u" hour"_s : u" hours"_s) + u" booked, "_s + QString::number(tried - booked) +
                           u" refused"_s;
    return tried < all ? counts + u", "_s + QString::number(all - tried) + u" not finished"_s : counts;
}

void addHour(RowsTable &table, const BlockBookingHour &hour)
{
    const bool booked = hour.outcome == BookingOutcome::Booked;
    const Look::Tone tone = booked ? Look::free : Look::alert;
    const auto cells = table.addRow({dayInWords(hour.date), hourRangeText(QStringView(hour.hour).left(2).toInt()),
                                     booked ? u"Booked"_s : refusalText(hour.outcome)});
    for (QStandardItem *cell : cells) {
        QFont font = cell->font();
        font.setBold(!booked);
        cell->setFont(font);
    }
    cells.last()->setBackground(tone.background);
    cells.last()->setForeground(tone.text);
}

} // namespace

frm_BlockBookingResult::frm_BlockBookingResult(const std::vector<BlockBookingHour> &results, std::size_t planned,
                                               const QString &heading, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"frm_BlockBookingResult"_s);
    setWindowTitle(u"Block booking"_s);
    RowsTable *table = makeTable(results);
    auto *close = new QPushButton(u"&Close"_s);
    close->setObjectName(u"btn_Close"_s);
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Counts"_s, countsText(results, planned), 1.3));
    layout->addWidget(wrappedLabel(u"lbl_Heading"_s, heading));
    layout->addSpacing(8);
    layout->addWidget(table, 1);
    layout->addSpacing(8);
    layout->addWidget(close, 0, Qt::AlignRight);
    close->setFocus();
    resize(qMax(480, table->widthOfCells() + 112), qMin(560, table->verticalHeader()->length() + 208));
}

RowsTable *frm_BlockBookingResult::makeTable(const std::vector<BlockBookingHour> &results)
{
    auto *table =
        new RowsTable(u"ListView_BlockBooking"_s, u"What became of each hour"_s, {u"Date"_s, u"Hour"_s, u"Outcome"_s});
    for (const BlockBookingHour &hour : results)
        addHour(*table, hour);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->fitColumns(2);
    return table;
}
