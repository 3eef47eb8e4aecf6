#include "options/page_Stock.h"

#include "app/Errors.h"
#include "app/FieldLengths.h"
#include "app/SqlText.h"
#include "look/Look.h"
#include "look/NoBackslash.h"
#include "look/RowsTable.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

enum Column { Name, Kind, Stock, Pieces, AfterDelivery, Difference };

constexpr int mostDigits = 7;

// Takes digits only.
class PiecesDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem & /*option*/,
                          const QModelIndex & /*index*/) const override
    {
        auto *box = new QLineEdit(parent);
        box->setObjectName(u"txt_StockCell"_s);
        box->setAccessibleName(u"Pieces"_s);
        box->setFrame(false);
        box->setMaxLength(mostDigits);
        box->setAlignment(Qt::AlignRight);
        box->setValidator(new QIntValidator(0, 9'999'999, box));
        return box;
    }
};

QString signedText(int number)
{
    return number > 0 ? u'+' + QString::number(number) : QString::number(number);
}

// "Cola +24, Tea +6"; of a count the differences.
QString piecesInWords(const std::vector<StockEntry> &entries, bool isCount)
{
    constexpr qsizetype most = 5;
    QStringList words;
    words.reserve(qsizetype(entries.size()));
    for (const StockEntry &entry : entries)
        words << entry.item.name + u' ' + signedText(entry.number - (isCount ? entry.item.stock : 0));
    const qsizetype more = words.size() - most;
    return words.mid(0, most).join(u", "_s) + (more > 0 ? sql(u" and %1 more"_s, qint64(more)) : QString());
}

QString movedInWords(const std::vector<StockEntry> &entries, const std::vector<StockItem> &moved)
{
    QString lines;
    for (const StockItem &now : moved)
        for (const StockEntry &entry : entries)
            if (entry.item.id == now.id)
                lines += sql(u"\n%1: %2 since you saw %3, so the stock becomes %4"_s, now.name,
                             signedText(now.stock - entry.item.stock), entry.item.stock,
                             now.stock + entry.number - entry.item.stock);
    return u"While you counted, goods were sold or delivered:"_s + lines +
           u"\n\nThat is right if you counted before. If you counted after, press No, refresh the page and enter the "
           u"numbers again. Record the count as it is?"_s;
}

} // namespace

page_Stock::page_Stock(Station &station, const QString &administrator, QWidget *parent)
    : OptionsPage(station, administrator, parent),
      m_list(new RowsTable(u"ListView_Stock"_s, u"Goods and their stock"_s,
                           {u"Item"_s, u"Kind"_s, u"Stock"_s, u"Pieces"_s, u"If delivered"_s, u"If counted"_s}))
{
    setObjectName(u"page_Stock"_s);
    m_list->fitColumns(
        {QString(), u"Drinks and food"_s, u"1000000"_s, u"1000000"_s, u"If delivered"_s, u"If counted"_s});
    m_list->setItemDelegateForColumn(Pieces, new PiecesDelegate(m_list));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_StockHelp"_s,
                                   u"Type the pieces of each item, in the list or below it, then say "
                                   "whether they were delivered or counted."_s));
    layout->addWidget(m_list, 1);
    layout->addLayout(makeEntry());
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &page_Stock::showSelected);
    connect(static_cast<QStandardItemModel *>(m_list->model()), &QStandardItemModel::itemChanged, this,
            &page_Stock::takeCell);
    showSelected();
}

QLayout *page_Stock::makeEntry()
{
    m_selected = new QLabel;
    m_selected->setObjectName(u"lbl_StockSelected"_s);
    m_selected->setTextFormat(Qt::PlainText);
    m_count = new QLineEdit;
    m_count->setObjectName(u"txt_StockCount"_s);
    m_count->setMaxLength(mostDigits);
    m_count->setValidator(new QIntValidator(0, 9'999'999, m_count));
    auto *countLabel = new QLabel(u"&Pieces"_s);
    countLabel->setBuddy(m_count);
    m_reason = new QLineEdit;
    m_reason->setObjectName(u"txt_StockReason"_s);
    m_reason->setAccessibleName(u"Supplier or reason"_s);
    m_reason->setPlaceholderText(u"Supplier and delivery note, or why it was counted"_s);
    m_reason->setMaxLength(FieldLengths::activity);
    new NoBackslash(m_reason);
    auto *reasonLabel = new QLabel(u"S&upplier or reason"_s);
    reasonLabel->setBuddy(m_reason);
    m_done = wrappedLabel(u"lbl_StockDone"_s, {});

    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    grid->addWidget(countLabel, 0, 0);
    grid->addWidget(m_count, 0, 1);
    grid->addWidget(m_selected, 0, 2, 1, 3);
    grid->addWidget(reasonLabel, 1, 0);
    grid->addWidget(m_reason, 1, 1, 1, 2);
    grid->addWidget(m_done, 2, 0, 1, 5);
    grid->setColumnStretch(2, 1);
    const auto addButton = [&](int column, const QString &name, const QString &caption, const QString &tip,
                               void (page_Stock::*action)()) {
        auto *button = new QPushButton(caption);
        button->setObjectName(name);
        button->setToolTip(tip);
        button->setAutoDefault(false);
        grid->addWidget(button, 1, column);
        connect(button, &QPushButton::clicked, this, action);
    };
    addButton(3, u"btn_Deliver"_s, u"Were &delivered"_s, u"Adds the pieces to the stock of their items."_s,
              &page_Stock::deliverAll);
    addButton(4, u"btn_StockTake"_s, u"Were &counted"_s, u"Corrects the stock of the items to what was counted."_s,
              &page_Stock::takeStockOfAll);
    connect(m_count, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (selectedRow() >= 0)
            enter(selectedRow(), text);
    });
    return grid;
}

void page_Stock::load()
{
    const int row = selectedRow();
    const int selected = row < 0 ? 0 : m_items[std::size_t(row)].id;
    m_items = readStock(station().database);
    m_numbers.clear();
    showItems();
    for (std::size_t i = 0; i < m_items.size(); ++i)
        if (row >= 0 && m_items[i].id == selected)
            m_list->selectRow(int(i));
    showSelected();
    Q_EMIT touched();
}

bool page_Stock::save()
{
    station().prompts.refuse(u"Please press \"Were delivered\" or \"Were counted\", or take the pieces out again."_s);
    return false;
}

void page_Stock::showItems()
{
    const QScopedValueRollback<bool> showing(m_showing, true);
    m_list->clearRows();
    m_rows.clear();
    m_rows.reserve(m_items.size());
    for (const StockItem &item : m_items) {
        m_rows.push_back(m_list->addRow({item.name, item.type, QString::number(item.stock), {}, {}, {}}));
        QList<QStandardItem *> &cells = m_rows.back();
        for (const int column : {int(Stock), int(Pieces), int(AfterDelivery), int(Difference)})
            cells[column]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        cells[Pieces]->setEditable(true);
        cells[Pieces]->setBackground(Look::shared.background.lighter(112)); // where something can be typed
    }
}

void page_Stock::showRow(int row)
{
    const QScopedValueRollback<bool> showing(m_showing, true);
    const StockItem &item = m_items.at(std::size_t(row));
    const QList<QStandardItem *> &cells = m_rows.at(std::size_t(row));
    const auto number = m_numbers.find(item.id);
    const bool isEntered = number != m_numbers.end();
    cells[Pieces]->setText(isEntered ? QString::number(number->second) : QString());
    cells[AfterDelivery]->setText(isEntered ? QString::number(item.stock + number->second) : QString());
    cells[Difference]->setText(isEntered ? signedText(number->second - item.stock) : QString());
}

int page_Stock::selectedRow() const
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void page_Stock::showSelected()
{
    if (m_showing)
        return;
    const int row = selectedRow();
    const QSignalBlocker quiet(m_count);
    m_count->setEnabled(row >= 0);
    m_count->setText(row < 0 ? QString() : m_rows[std::size_t(row)][Pieces]->text());
    m_selected->setText(
        row < 0 ? u"Select an item in the list"_s
                : sql(u"of %1, %2 in stock"_s, m_items[std::size_t(row)].name, m_items[std::size_t(row)].stock));
}

void page_Stock::enter(int row, const QString &text)
{
    const int id = m_items.at(std::size_t(row)).id;
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (isNumber && number >= 0)
        m_numbers[id] = number;
    else
        m_numbers.erase(id);
    m_done->clear();
    showRow(row);
    Q_EMIT touched();
}

void page_Stock::takeCell(const QStandardItem *cell)
{
    if (m_showing || cell->column() != Pieces)
        return;
    enter(cell->row(), cell->text());
    showSelected();
}

std::vector<StockEntry> page_Stock::entries() const
{
    std::vector<StockEntry> entries;
    entries.reserve(m_numbers.size());
    for (const StockItem &item : m_items)
        if (const auto number = m_numbers.find(item.id); number != m_numbers.end())
            entries.push_back({item, number->second});
    return entries;
}

void page_Stock::deliverAll()
{
    guarded(station().prompts, ErrorCode::Database, [this] {
        const std::vector<StockEntry> delivered = entries();
        const QString refusal = deliver(station(), administrator(), delivered, m_reason->text().trimmed());
        if (!refusal.isEmpty())
            station().prompts.refuse(refusal);
        else
            finish(u"Delivered: "_s + piecesInWords(delivered, false));
    });
}

void page_Stock::takeStockOfAll()
{
    guarded(station().prompts, ErrorCode::Database, [this] {
        const std::vector<StockEntry> counted = entries();
        const QString reason = m_reason->text().trimmed();
        StockTake take = takeStock(station(), administrator(), counted, reason);
        // Whoever counted has to know what was sold meanwhile, as often as there is something to know.
        while (!take.moved.empty()) {
            if (!station().prompts.confirm(movedInWords(counted, take.moved), u"Stock take"_s))
                return;
            const std::vector<StockItem> known = std::exchange(take.moved, {});
            take = takeStock(station(), administrator(), counted, reason, known);
        }
        if (!take.refusal.isEmpty())
            station().prompts.refuse(take.refusal);
        else
            finish(u"Counted: "_s + piecesInWords(counted, true));
    });
}

void page_Stock::finish(const QString &done)
{
    m_reason->clear();
    load();
    m_done->setText(done);
}
