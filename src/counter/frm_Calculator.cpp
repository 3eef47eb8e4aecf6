#include "counter/frm_Calculator.h"

#include "app/Conversions.h"
#include "app/Errors.h"
#include "counter/AmountGiven.h"
#include "counter/DigitKeys.h"
#include "counter/ItemQuantity.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int backspace = 8;

} // namespace

frm_Calculator::frm_Calculator(Prompts &prompts, const QString &itemName, const QString &unitPrice, QWidget *parent)
    : KeyedDialog(parent), m_prompts(prompts), m_unitPrice(unitPrice), m_number(new QLabel), m_price(new QLabel)
{
    setObjectName(u"frm_Calculator"_s);
    setWindowTitle(u"Quantity"_s);
    setProperty("touch", true);
    m_number->setObjectName(u"lbl_Number"_s);
    m_price->setObjectName(u"lbl_Price"_s);

    auto *keys = new DigitKeys(u"lbl_Key_"_s, {}, {});
    connect(keys, &DigitKeys::keyed, this,
            [this](const QString &digit) { showNumber(numberAfterPad(number(), digit.front())); });
    connect(keys, &DigitKeys::takenBack, this, [this] { showNumber(number().chopped(!number().isEmpty())); });
    auto *layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(head(itemName));
    layout->addWidget(keys);
    layout->addWidget(buttons());
    auto *ok = findChild<QPushButton *>(u"lbl_OK"_s);
    setTabOrder(ok, findChild<QPushButton *>(u"btn_Cancel"_s));
    ok->setFocus();
    watchKeys();
    showNumber({});
}

QWidget *frm_Calculator::head(const QString &itemName)
{
    auto *each = new QLabel(m_unitPrice + u" each"_s);
    each->setObjectName(u"lbl_UnitPrice"_s);
    QFont figures = m_number->font();
    figures.setPointSizeF(figures.pointSizeF() * 2.4);
    figures.setBold(true);
    m_number->setFont(figures);
    m_number->setTextFormat(Qt::PlainText);
    m_number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_number->setFrameShape(QFrame::StyledPanel);
    m_number->setBackgroundRole(QPalette::Base);
    m_number->setAutoFillBackground(true);
    m_number->setMargin(4);
    m_number->setMinimumHeight(64);
    m_number->setAccessibleName(u"Quantity"_s);

    auto *head = new QWidget;
    auto *prices = new QHBoxLayout;
    prices->addWidget(each);
    prices->addStretch();
    prices->addWidget(m_price);
    auto *layout = new QVBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Item"_s, itemName, 1.3));
    layout->addWidget(m_number);
    layout->addLayout(prices);
    return head;
}

QWidget *frm_Calculator::buttons()
{
    auto *cancel = new QPushButton(u"&Cancel"_s);
    cancel->setObjectName(u"btn_Cancel"_s);
    cancel->setAccessibleName(u"Cancel"_s);
    auto *ok = new QPushButton(u"&OK"_s);
    ok->setObjectName(u"lbl_OK"_s);
    ok->setAccessibleName(u"OK"_s);
    ok->setDefault(true);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.3);
    for (QPushButton *button : {cancel, ok}) {
        button->setMinimumHeight(64);
        button->setFont(large);
    }
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ok, &QPushButton::clicked, this, &frm_Calculator::takeOver);

    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(cancel);
    layout->addWidget(ok);
    return row;
}

QString frm_Calculator::quantity() const
{
    return m_number->text();
}

void frm_Calculator::preset(const QString &number)
{
    showNumber(number);
    m_presetNumber = number;
    m_isPreset = !number.isEmpty();
}

QString frm_Calculator::number() const
{
    return m_isPreset ? QString() : m_number->text();
}

void frm_Calculator::showNumber(const QString &number)
{
    m_isPreset = false;
    m_number->setText(number);
    try {
        m_price->setText(number.isEmpty() ? QString() : priceOfQuantity(number, m_unitPrice, u"##,##0.00"_s));
    } catch (const ConversionError &) {
        m_price->setText(u"too many"_s);
    }
}

void frm_Calculator::takeOver()
{
    guarded(m_prompts, ErrorCode::Unknown, [this] { sellsNothing(quantity()) ? reject() : accept(); });
}

bool frm_Calculator::takeKey(const QKeyEvent &event)
{
    const int code = codeOf(event);
    const QString changed = digitsAfterKey(number(), code);
    const bool takesBackPreset = m_isPreset && code == backspace;
    if (changed == number() && !takesBackPreset)
        return false;
    showNumber(changed);
    return true;
}

void frm_Calculator::takeScan(const QString &digits)
{
    const QString keyed = m_number->text().chopped(digits.size());
    showNumber(keyed.isEmpty() ? m_presetNumber : keyed);
    takeOver();
    if (!isVisible())
        m_scanned = digits;
}
