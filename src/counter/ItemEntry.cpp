#include "counter/ItemEntry.h"

#include "app/Errors.h"
#include "counter/ItemQuantity.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

constexpr int space = 8;
constexpr int touchHeight = 44;
constexpr auto tag = "tag"; // of the item's name: its unit price

} // namespace

ItemEntry::ItemEntry(Prompts &prompts, QWidget *parent)
    : QWidget(parent), m_prompts(prompts), m_name(new QLineEdit), m_quantity(new QLineEdit), m_price(new QLabel)
{
    m_name->setObjectName(u"txt_ItemInfo"_s);
    m_name->setAccessibleName(u"Chosen item"_s);
    m_name->setPlaceholderText(u"Chosen item"_s);
    m_name->setReadOnly(true);
    m_name->setFocusPolicy(Qt::NoFocus);
    m_quantity->setObjectName(u"txt_ItemQuantity"_s);
    m_quantity->setAccessibleName(u"Quantity"_s);
    m_quantity->setPlaceholderText(u"Quantity"_s);
    m_quantity->setAlignment(Qt::AlignRight);
    m_quantity->setFixedWidth(fontMetrics().horizontalAdvance(u"Quantity 0000"_s));
    m_quantity->installEventFilter(this);
    m_quantity->setFocusPolicy(Qt::TabFocus); // a click asks on the pad, and the keys stay where they were
    m_price->setObjectName(u"lbl_ItemPrice"_s);
    m_price->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_price->setMinimumWidth(fontMetrics().horizontalAdvance(u"00,000.00 00"_s));
    for (QLineEdit *box : {m_name, m_quantity})
        box->setMinimumHeight(touchHeight);
    connect(m_quantity, &QLineEdit::textChanged, this, &ItemEntry::showPrice);
    connect(m_quantity, &QLineEdit::returnPressed, this, &ItemEntry::takeOver);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(space);
    row->addWidget(m_name, 1);
    row->addWidget(m_quantity);
    row->addWidget(m_price);
}

void ItemEntry::choose(const StoreItem &item)
{
    clear();
    m_chosen = item;
    m_name->setText(item.name);
    m_name->setProperty(tag, item.price);
    if (!item.isMisc())
        m_quantity->setText(u"0"_s);
}

void ItemEntry::setQuantity(const QString &quantity)
{
    m_quantity->setText(quantity);
}

void ItemEntry::clear()
{
    m_chosen.reset();
    m_name->clear();
    m_name->setProperty(tag, {});
    m_quantity->clear();
    m_price->clear();
}

bool ItemEntry::isTypedIn() const
{
    return window()->focusWidget() == m_quantity;
}

void ItemEntry::takeOver()
{
    if (m_chosen && m_chosen->isMisc())
        Q_EMIT padWanted(*m_chosen);
    else if (m_chosen)
        Q_EMIT quantityTyped(m_chosen->name, m_chosen->price, m_quantity->text());
}

void ItemEntry::showPrice()
{
    guarded(m_prompts, ErrorCode::Unknown, [this] {
        if (m_chosen && !m_quantity->text().isEmpty())
            m_price->setText(priceOfQuantity(m_quantity->text(), m_chosen->price, u"##,##0.00"_s));
    });
}

bool ItemEntry::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_quantity && event->type() == QEvent::MouseButtonRelease && m_chosen)
        Q_EMIT padWanted(*m_chosen);
    return QWidget::eventFilter(watched, event);
}
