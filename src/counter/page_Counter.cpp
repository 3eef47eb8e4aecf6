#include "counter/page_Counter.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "counter/CartTable.h"
#include "counter/ItemEntry.h"
#include "counter/StoreView.h"
#include "counter/TillActions.h"
#include "look/Look.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 8;
constexpr int touchHeight = 44;
constexpr int noteColumn = 4;

QLabel *namedLabel(const QString &name, double size = 1, bool bold = false)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    label->setFont(font);
    return label;
}

/// Keys that come to the window are this box's.
bool isTypedIn(const QWidget *box)
{
    return box->window()->focusWidget() == box;
}

} // namespace

page_Counter::page_Counter(Station &station, QWidget *parent)
    : Page(parent), m_station(station), m_actions(new TillActions(station, this))
{
    setObjectName(u"page_Counter"_s);
    setProperty("touch", true);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(space, space, space, space);
    layout->setSpacing(2 * space);
    layout->addWidget(makeStore(), 5);
    layout->addWidget(makeList(), 6);
    connect(m_actions, &TillActions::listChanged, this, &page_Counter::showList);
    connect(m_actions, &TillActions::stockTouched, this, &page_Counter::RefreshStore);
    connect(m_actions, &TillActions::changeGiven, m_change,
            [this](const QString &change) { m_change->setText(u"Last change "_s + change); });
    showList();
}

QWidget *page_Counter::makeStore()
{
    m_find = new QLineEdit;
    m_find->setObjectName(u"txt_Find"_s);
    m_find->setPlaceholderText(u"Find an item by name or type  ( / )"_s);
    m_find->setAccessibleName(u"Find an item"_s);
    m_find->setClearButtonEnabled(true);
    m_find->setMinimumHeight(touchHeight);
    m_store = new StoreView(m_items);
    m_note = namedLabel(u"lbl_TillNote"_s);
    m_note->setWordWrap(true);
    m_note->hide();
    connect(m_find, &QLineEdit::textChanged, &m_items, &StoreModel::setFilter);
    connect(m_find, &QLineEdit::textChanged, m_note, &QWidget::hide);
    connect(m_store, &StoreView::chosen, this, [this](int row) { choose(m_items.item(row)); });

    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    layout->addWidget(m_find);
    layout->addWidget(m_note);
    layout->addWidget(m_store, 1);
    return side;
}

QWidget *page_Counter::makeList()
{
    m_time = namedLabel(u"txt_Time2"_s, 1.25, true);
    m_held = new QPushButton;
    m_held->setObjectName(u"btn_Held"_s);
    m_heldMenu = new QMenu(m_held);
    m_heldMenu->setObjectName(u"mnu_Held"_s);
    m_held->setMenu(m_heldMenu);
    m_bringBack = new QPushButton(u"Bring the list back"_s);
    m_bringBack->setObjectName(u"btn_BringBack"_s);
    connect(m_bringBack, &QPushButton::clicked, m_actions, &TillActions::bringBack);
    m_cart = new CartTable;
    m_entry = new ItemEntry(m_station.prompts);
    connect(
        m_entry, &ItemEntry::padWanted, this, [this](const StoreItem &item) { choose(item); }, Qt::QueuedConnection);
    connect(m_actions, &TillActions::quantityChosen, m_entry, &ItemEntry::setQuantity);
    connect(m_entry, &ItemEntry::quantityTyped, m_actions, &TillActions::addQuantity);

    auto *side = new QWidget;
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(space);
    auto *head = new QHBoxLayout;
    head->addWidget(m_held);
    head->addWidget(m_bringBack);
    head->addStretch(1);
    head->addWidget(m_time);
    layout->addLayout(head);
    layout->addWidget(m_cart, 1);
    layout->addWidget(m_entry);
    layout->addLayout(makeTotal());
    layout->addLayout(makeButtons());
    return side;
}

QLayout *page_Counter::makeTotal()
{
    m_change = namedLabel(u"lbl_LastChange"_s, 1.1);
    auto *caption = namedLabel(u"lbl_TotalCaption"_s, 1.4);
    caption->setText(u"Total"_s);
    m_total = namedLabel(u"lbl_TotalPrice"_s, 3, true);
    m_total->setAccessibleName(u"Total"_s);
    m_total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_total->setMinimumHeight(m_total->fontMetrics().height());
    auto *row = new QHBoxLayout;
    row->addWidget(m_change);
    row->addStretch(1);
    row->addWidget(caption);
    row->addWidget(m_total);
    return row;
}

QPushButton *page_Counter::addButton(QLayout &layout, const QString &name, const QString &text, const QString &icon,
                                     void (TillActions::*handler)())
{
    auto *button = new QPushButton(Look::icon(icon), text);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, m_actions, handler);
    layout.addWidget(button);
    return button;
}

QLayout *page_Counter::makeButtons()
{
    auto *list = new QHBoxLayout;
    auto *remove = new QPushButton(Look::icon(u"delete"_s), u"&Delete line"_s);
    remove->setObjectName(u"btn_Delete"_s);
    connect(remove, &QPushButton::clicked, this, [this] { m_actions->remove(m_cart->line()); });
    list->addWidget(remove);
    addButton(*list, u"btn_Reset"_s, u"&Reset"_s, u"reset"_s, &TillActions::reset);
    addButton(*list, u"btn_Hold"_s, u"&Hold…"_s, u"hold"_s, &TillActions::hold);
    auto *other = new QHBoxLayout;
    addButton(*other, u"btn_NoSale"_s, u"&No sale"_s, u"drawer"_s, &TillActions::noSale);
    addButton(*other, u"btn_PrintOldReceipt"_s, u"Print &old receipt…"_s, u"receipt"_s, &TillActions::printOldReceipt);
    QPushButton *last =
        addButton(*other, u"btn_PrintLastReceipt"_s, u"Last receipt"_s, u"receipt"_s, &TillActions::printLastReceipt);
    last->setShortcut(Qt::CTRL | Qt::Key_R);
    last->setToolTip(u"Prints the receipt of the last sale (Ctrl+R)."_s);
    auto *left = new QVBoxLayout;
    left->setSpacing(space);
    for (QHBoxLayout *row : {list, other}) {
        row->setSpacing(space);
        left->addLayout(row);
    }
    auto *rows = new QHBoxLayout;
    rows->setSpacing(space);
    rows->addLayout(left, 1);
    QPushButton *pay = addButton(*rows, u"btn_Pay"_s, u"Pay  ( P )"_s, u"pay"_s, &TillActions::pay);
    QFont large = pay->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    large.setBold(true);
    pay->setFont(large);
    pay->setMinimumHeight(2 * touchHeight + space);
    return rows;
}

void page_Counter::load()
{
    m_isLoaded = true;
    RefreshStore();
    m_actions->open();
}

void page_Counter::refresh()
{
    RefreshStore();
    m_store->setFocus(Qt::OtherFocusReason);
}

void page_Counter::RefreshStore()
{
    m_isStoreRead = quietly(m_station.database, [this] { m_items.setItems(readStore(m_station.database)); });
    if (!m_isStoreRead)
        note(u"The items could not be read. What is shown may be old."_s);
    else
        m_note->hide();
}

void page_Counter::showTime(const QString &timeText)
{
    m_time->setText(timeText);
    if (!m_isStoreRead && m_isLoaded && isVisible() && m_station.database.isReachable())
        RefreshStore();
}

void page_Counter::showList()
{
    const PaymentList &list = m_actions->till().list();
    m_cart->showLines(list, m_actions->refused());
    m_total->setText(list.total());
    if (list.total().isEmpty())
        m_entry->clear();
    m_bringBack->setVisible(m_actions->canBringBack());
    if (!m_actions->refused().empty())
        note(m_actions->refused().front().why);
    showHeld();
    Q_EMIT listShown(list.isEmpty() ? QString() : list.total());
}

void page_Counter::showHeld()
{
    const auto &held = m_actions->till().held();
    m_held->setVisible(!held.empty());
    m_held->setText(u"On hold: "_s + QString::number(held.size()));
    m_heldMenu->clear();
    for (std::size_t i = 0; i < held.size(); ++i) {
        QAction *entry =
            m_heldMenu->addAction(QString(held[i].name).replace(u'&', u"&&"_s) + u"\t"_s + held[i].list.total());
        entry->setObjectName(u"mnu_Held_"_s + QString::number(i));
        connect(
            entry, &QAction::triggered, m_actions, [this, i] { m_actions->recall(i); }, Qt::QueuedConnection);
    }
}

void page_Counter::choose(const StoreItem &chosen, const QString &number)
{
    // The list may be read anew meanwhile.
    const StoreItem item = chosen; // NOLINT(performance-unnecessary-copy-initialization)
    m_note->hide();
    m_entry->choose(item);
    const QString scanned = m_actions->addItem(item, number);
    if (!scanned.isEmpty())
        chooseScanned(scanned);
}

void page_Counter::chooseKey(const QString &key)
{
    if (const StoreItem *item = m_items.itemOfKey(key))
        choose(*item);
    else
        note(u"No item has the key "_s + key);
}

void page_Counter::note(const QString &words)
{
    m_note->setText(words);
    m_note->show();
}

bool page_Counter::takeKey(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (event.key() == Qt::Key_F && modifiers == Qt::AltModifier) {
        m_actions->tellOfHeldLists();
        Q_EMIT logOutWanted();
        return true;
    }
    if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F16 && modifiers != Qt::AltModifier) {
        if (!event.isAutoRepeat())
            chooseKey(u"F"_s + QString::number(event.key() - Qt::Key_F1 + 1));
        return true;
    }
    if (takeScan(event))
        return true;
    const bool plus = event.key() == Qt::Key_Plus && event.modifiers() & Qt::KeypadModifier;
    if (plus || (event.key() == Qt::Key_P && !isTypedIn(m_find))) {
        if (!event.isAutoRepeat())
            m_actions->pay();
        return true;
    }
    return takeFindKey(event);
}

bool page_Counter::takeFindKey(const QKeyEvent &event)
{
    const bool finding = isTypedIn(m_find);
    if (!finding && event.text() == u"/") {
        m_find->setFocus(Qt::ShortcutFocusReason);
        m_find->selectAll();
        return true;
    }
    if (finding && event.key() == Qt::Key_Escape) {
        m_find->clear();
        m_store->setFocus(Qt::OtherFocusReason);
        return true;
    }
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (!finding || !enter)
        return false;
    if (m_items.rowCount() > 0 && !m_find->text().isEmpty())
        choose(m_items.item(0));
    else if (!m_find->text().isEmpty())
        note(u"No item is called so."_s);
    m_find->selectAll();
    return true;
}

bool page_Counter::takeScan(const QKeyEvent &event)
{
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (!enter) {
        m_scan.take(event);
        const QString text = event.text();
        // Digits are searched for nowhere else, but typed where there is something to type in.
        return text.size() == 1 && text.front().isDigit() && !isTypedIn(m_find) && !m_entry->isTypedIn();
    }
    const QString digits = m_scan.end(event);
    const bool isCode = digits.size() >= ScanReader::shortestCode;
    // Few digits are a quantity where one is typed, and may be part of a name in the find box.
    if (digits.isEmpty() || (!isCode && m_entry->isTypedIn()) ||
        (!isCode && isTypedIn(m_find) && !m_items.itemOfKey(digits)))
        return false;
    chooseScanned(digits);
    return true;
}

void page_Counter::chooseScanned(const QString &code)
{
    const StoreItem *item = m_items.itemOfKey(code);
    if (!item) {
        note(u"No item has the key "_s + code);
        return;
    }
    m_find->clear();
    choose(*item, u"1"_s);
}
