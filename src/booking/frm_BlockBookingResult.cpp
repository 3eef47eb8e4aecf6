#include "booking/frm_BlockBookingResult.h"

#include "booking/SlotWords.h"
#include "look/Look.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>

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

void appendHour(QStandardItemModel *model, const BlockBookingHour &hour)
{
    const bool booked = hour.outcome == BookingOutcome::Booked;
    const Look::Tone tone = booked ? Look::free : Look::alert;
    QList<QStandardItem *> cells{new QStandardItem(dayInWords(hour.date)),
                                 new QStandardItem(hourRangeText(QStringView(hour.hour).left(2).toInt())),
                                 new QStandardItem(booked ? u"Booked"_s : refusalText(hour.outcome))};
    for (QStandardItem *cell : cells) {
        cell->setEditable(false);
        QFont font = cell->font();
        font.setBold(!booked);
        cell->setFont(font);
    }
    cells.last()->setBackground(tone.background);
    cells.last()->setForeground(tone.text);
    model->appendRow(cells);
}

int columnsWidth(const QTableView *table)
{
    int width = 0;
    for (int column = 0; column < table->model()->columnCount(); ++column)
        width += static_cast<const QAbstractItemView *>(table)->sizeHintForColumn(column);
    return width;
}

} // namespace

frm_BlockBookingResult::frm_BlockBookingResult(const std::vector<BlockBookingHour> &results, std::size_t planned,
                                               const QString &heading, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"frm_BlockBookingResult"_s);
    setWindowTitle(u"Block booking"_s);
    QTableView *table = makeTable(results);
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
    resize(qMax(480, columnsWidth(table) + 112), qMin(560, table->verticalHeader()->length() + 208));
}

QTableView *frm_BlockBookingResult::makeTable(const std::vector<BlockBookingHour> &results)
{
    auto *table = new QTableView;
    auto *model = new QStandardItemModel(0, 3, table);
    model->setHorizontalHeaderLabels({u"Date"_s, u"Hour"_s, u"Outcome"_s});
    for (const BlockBookingHour &hour : results)
        appendHour(model, hour);
    table->setObjectName(u"ListView_BlockBooking"_s);
    table->setAccessibleName(u"What became of each hour"_s);
    table->setModel(model);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    QHeaderView *header = table->horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setStretchLastSection(true);
    return table;
}
