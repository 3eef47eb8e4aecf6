#include "counter/CashAmountDialog.h"

#include "app/Errors.h"
#include "app/Station.h"
#include "counter/AmountNote.h"
#include "counter/MoneyWords.h"
#include "look/NoBackslash.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

CashAmountDialog::CashAmountDialog(Station &station, const CashQuestion &question,
                                   std::function<void(const QString &)> record, QWidget *parent)
    : DrawerDialog(station, parent), m_station(station), m_record(std::move(record)), m_amount(new QLineEdit)
{
    setObjectName(question.window);
    setWindowTitle(question.title);
    m_amount->setObjectName(question.box);
    m_amount->setMaxLength(longestAmount);
    m_amount->setAlignment(Qt::AlignRight);
    new NoBackslash(m_amount);
    QFont figures = m_amount->font();
    figures.setPointSizeF(figures.pointSizeF() * 2);
    m_amount->setFont(figures);
    auto *caption = new QLabel(question.caption);
    caption->setBuddy(m_amount);
    auto *ok = new QPushButton(u"&OK"_s);
    ok->setObjectName(u"btn_OK"_s);
    auto *cancel = new QPushButton(u"&Cancel"_s);
    cancel->setObjectName(u"btn_Cancel"_s);
    cancel->setAutoDefault(false);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &CashAmountDialog::takeOver);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Heading"_s, question.heading, 1.3));
    layout->addWidget(drawerWords());
    layout->addSpacing(8);
    layout->addWidget(caption);
    layout->addWidget(m_amount);
    layout->addWidget(new AmountNote(*m_amount));
    layout->addSpacing(8);
    layout->addLayout(buttons);
    setMinimumWidth(440);
    m_amount->setFocus();
    watchKeys();
}

void CashAmountDialog::takeOver()
{
    const QString amount = m_amount->text();
    if (!isValueConfirmed(m_station.prompts))
        return;
    m_station.prompts.inform(u"Please close the cash register now!"_s, u"Important"_s, MessageIcon::Warning);
    if (guarded(m_station.prompts, ErrorCode::Database, [&] { m_record(amount); }))
        accept();
}
