#include "counter/frm_MiscItem.h"

#include "app/Errors.h"
#include "counter/DigitKeys.h"
#include "counter/ItemQuantity.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

frm_MiscItem::frm_MiscItem(Prompts &prompts, const QString &itemName, QWidget *parent)
    : KeyedDialog(parent), m_prompts(prompts), m_price(new QLineEdit)
{
    setObjectName(u"frm_MiscItem"_s);
    setWindowTitle(itemName);
    setProperty("touch", true);
    m_price->setObjectName(u"txt_ItemPrice"_s);
    m_price->setAccessibleName(u"Price"_s);
    m_price->setMaxLength(16);
    m_price->setAlignment(Qt::AlignRight);
    QFont figures = m_price->font();
    figures.setPointSizeF(figures.pointSizeF() * 2);
    m_price->setFont(figures);
    auto *caption = new QLabel(u"&Price"_s);
    caption->setBuddy(m_price);

    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Item"_s, itemName, 1.3));
    layout->addWidget(caption);
    layout->addWidget(m_price);
    addKeys();
    m_price->setFocus();
    watchKeys();
}

void frm_MiscItem::addKeys()
{
    auto *keys = new DigitKeys(u"btn_Key_"_s, u"."_s, u"Point"_s);
    connect(keys, &DigitKeys::keyed, m_price, &QLineEdit::insert);
    connect(keys, &DigitKeys::takenBack, m_price, &QLineEdit::backspace);
    auto *ok = new QPushButton(u"&OK"_s);
    ok->setObjectName(u"txt_OK"_s);
    ok->setAccessibleName(u"OK"_s);
    ok->setDefault(true);
    auto *cancel = new QPushButton(u"&Cancel"_s);
    cancel->setObjectName(u"btn_Cancel"_s);
    cancel->setAccessibleName(u"Cancel"_s);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    for (QPushButton *button : {cancel, ok}) {
        button->setMinimumHeight(64);
        button->setFont(large);
    }
    connect(ok, &QPushButton::clicked, this, &frm_MiscItem::takeOver);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(cancel);
    buttons->addWidget(ok);
    auto *all = static_cast<QVBoxLayout *>(layout());
    all->addWidget(keys);
    all->addLayout(buttons);
    setTabOrder(m_price, ok);
    setTabOrder(ok, cancel);
}

void frm_MiscItem::takeOver()
{
    if (m_price->text().isEmpty()) {
        reject();
        return;
    }
    const bool isPrice = guarded(m_prompts, ErrorCode::Unknown, [this] { m_typed = typedPrice(m_price->text()); });
    if (isPrice) {
        accept();
        return;
    }
    m_price->setFocus();
    m_price->selectAll();
}

void frm_MiscItem::takeScan(const QString &digits)
{
    m_price->setText(m_price->text().chopped(digits.size()));
}
