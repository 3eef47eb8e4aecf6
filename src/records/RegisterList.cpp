#include "records/RegisterList.h"

#include "app/Errors.h"
#include "app/Formats.h"
#include "app/Station.h"
#include "look/NoBackslash.h"
#include "records/Registers.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

constexpr int pauseMilliseconds = 150;
constexpr int space = 8;

} // namespace

RegisterList::RegisterList(Station &station, const Register &records, QWidget *parent)
    : QWidget(parent),
      m_station(station),
      m_records(records),
      m_model(records),
      m_search(new QLineEdit),
      m_table(new QTableView),
      m_count(new QLabel)
{
    makeTable(records);
    m_count->setObjectName(u"lbl_Count"_s);
    m_count->setTextFormat(Qt::PlainText);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    layout->addWidget(makeSearch(records));
    layout->addWidget(m_table, 1);
    layout->addWidget(m_count);
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMilliseconds);
    connect(&m_pause, &QTimer::timeout, this, &RegisterList::readTyped);
    setFocusProxy(m_search);
}

QWidget *RegisterList::makeSearch(const Register &records)
{
    m_search->setObjectName(records.isOfItems() ? u"txt_SearchItemName"_s : u"txt_SearchMemberName"_s);
    m_search->setAccessibleName(u"Search "_s + records.entries());
    m_search->setPlaceholderText(records.isOfItems() ? u"Part of a name, type or key"_s : u"Part of a name"_s);
    m_search->setMaxLength(records.fields[records.name].maxLength);
    new NoBackslash(m_search);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &RegisterList::typed);
    auto *caption = new QLabel(u"&Search"_s);
    caption->setBuddy(m_search);
    auto *clear = new QPushButton(u"C&lear"_s);
    clear->setObjectName(u"btn_ClearSearchField"_s);
    clear->setAccessibleName(u"Clear the search"_s);
    clear->setToolTip(u"Empties the search, so that the list shows all %1."_s.arg(records.entries()));
    clear->setAutoDefault(false);
    connect(clear, &QPushButton::clicked, m_search, &QLineEdit::clear);
    connect(clear, &QPushButton::clicked, m_search, [this] { m_search->setFocus(); });

    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    layout->addWidget(caption);
    layout->addWidget(m_search, 1);
    layout->addWidget(clear);
    return row;
}

void RegisterList::makeTable(const Register &records)
{
    m_table->setObjectName(records.isOfItems() ? u"ListView_Item"_s : u"ListView_Member"_s);
    m_table->setAccessibleName(records.title);
    m_table->setModel(&m_model);
    m_table->setSelectionBehavior(QTableView::SelectRows);
    m_table->setSelectionMode(QTableView::SingleSelection);
    m_table->setEditTriggers(QTableView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->setMinimumSize(320, 200);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView *heads = m_table->horizontalHeader();
    heads->setHighlightSections(false);
    const QStringList widest = records.isOfItems() ? QStringList{{}, u"0000000.00"_s, u"Refreshments"_s}
                                                   : QStringList{u"M00000000000"_s, {}, u"+00 00000 000000"_s};
    for (int column = 0; column < widest.size(); ++column) {
        if (widest[column].isEmpty())
            heads->setSectionResizeMode(column, QHeaderView::Stretch);
        else
            heads->resizeSection(column, fontMetrics().horizontalAdvance(widest[column]) + 3 * space);
    }
    m_table->installEventFilter(this);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex &row) {
        if (!m_isSelecting)
            Q_EMIT chosen(row.row());
    });
    connect(m_table, &QTableView::doubleClicked, this, &RegisterList::enterPressed);
}

int RegisterList::current() const
{
    return m_table->currentIndex().row();
}

QString RegisterList::search() const
{
    return m_search->text();
}

void RegisterList::select(int row)
{
    const QScopedValueRollback<bool> selecting(m_isSelecting, true);
    if (row < 0) {
        m_table->clearSelection();
        m_table->setCurrentIndex({});
    } else {
        m_table->selectRow(row);
        m_table->scrollTo(m_model.index(row, 0));
    }
}

void RegisterList::setSearch(const QString &text)
{
    const QSignalBlocker quiet(m_search);
    m_search->setText(text);
    m_isTyped = false;
}

void RegisterList::typed()
{
    m_isTyped = true;
    if (!m_pause.isActive())
        readTyped();
}

void RegisterList::readTyped()
{
    if (!m_isTyped)
        return;
    m_pause.start();
    if (m_station.database.isWaiting())
        return; // tried again after the pause
    m_isTyped = false;
    Q_EMIT searched();
}

bool RegisterList::read()
{
    std::vector<RegisterRow> rows;
    const bool isRead = guarded(m_station.prompts, ErrorCode::Database,
                                [&] { rows = readList(m_station.database, m_records, m_search->text()); });
    const auto found = qsizetype(rows.size());
    const QScopedValueRollback<bool> selecting(m_isSelecting, true);
    m_model.setRows(std::move(rows));
    m_count->setText(isRead ? u"%1 %2"_s.arg(formatNumber(double(found), u"#,##0"_s),
                                             found == 1 ? m_records.entry : m_records.entries())
                            : u"The list could not be read."_s);
    return isRead;
}

bool RegisterList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == m_table && isEnter)
        Q_EMIT enterPressed();
    if (watched == m_search && (isEnter || key == Qt::Key_Down)) {
        m_table->setFocus();
        if (m_model.rowCount() > 0 && current() < 0)
            m_table->selectRow(0);
    }
    return isEnter || (watched == m_search && key == Qt::Key_Down);
}
