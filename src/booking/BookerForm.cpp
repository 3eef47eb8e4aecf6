#include "booking/BookerForm.h"

#include "app/DayRow.h"
#include "app/FieldLengths.h"
#include "app/RateType.h"
#include "records/CustomerNumbers.h"
#include "records/KeptLine.h"

#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

BookerForm::BookerForm(Station &station, QWidget *parent)
    : EntryForm(parent),
      m_station(station),
      m_name(addBox(u"&Name"_s, u"BookerName"_s, FieldLengths::name)),
      m_organisation(addBox(u"&Organisation"_s, u"BookerOrg"_s, FieldLengths::organisation)),
      m_telephone(addBox(u"&Telephone"_s, u"BookerTel"_s, FieldLengths::telephone)),
      m_numbers(new CustomerNumbers(station, *this)),
      m_rate(new QLabel)
{
    QFont bold = m_rate->font();
    bold.setBold(true);
    m_rate->setFont(bold);
    m_rate->setTextFormat(Qt::PlainText);
    m_rate->setObjectName(u"lbl_RateType"_s);
    addLine(u"Booked at"_s, m_rate);
    connect(m_numbers, &CustomerNumbers::found, this, &BookerForm::fillIn);
    connect(m_numbers, &CustomerNumbers::rateMayHaveChanged, this, &BookerForm::showRate);
    connect(this, &EntryForm::enteredLast, this, [this] {
        // After a look-up staff read first what became of it.
        if (!m_numbers->enterLookedUp() && !m_name->text().isEmpty())
            Q_EMIT completed();
    });
    setFocusProxy(m_name);
    showRate();
    if (station.keptCustomer)
        takeKept();
}

Booker BookerForm::booker() const
{
    return {m_name->text(), m_organisation->text(), m_telephone->text(), m_numbers->rateType()};
}

QString BookerForm::refusal() const
{
    if (m_name->text().isEmpty())
        return u"Please enter booker's name!"_s;
    return isMarkerText(m_name->text()) ? u"This name marks shared ground or extra time, please enter another one!"_s
                                        : QString();
}

void BookerForm::clear()
{
    for (QLineEdit *box : {m_name, m_organisation, m_telephone})
        box->clear();
    m_numbers->clear();
}

void BookerForm::takeKept()
{
    m_kept = new KeptLine(u"btn_ClearKept"_s, u"Cl&ear"_s, u"Empties the boxes and keeps nobody any more."_s);
    addLine({}, m_kept);
    m_numbers->take(*m_station.keptCustomer);
    m_kept->showWords(u"Filled from the register: "_s + m_station.keptCustomer->name);
    connect(m_kept, &KeptLine::takenBack, this, [this] {
        forgetKept();
        clear();
        setFocus();
    });
}

void BookerForm::forgetKept()
{
    m_station.keptCustomer.reset();
    if (m_kept)
        m_kept->showWords({});
}

void BookerForm::fillIn(const Booker &found)
{
    m_name->setText(found.name);
    m_organisation->setText(found.organisation);
    m_telephone->setText(found.telephone);
    for (QLineEdit *box : {m_name, m_organisation, m_telephone})
        box->setCursorPosition(0);
}

void BookerForm::showRate()
{
    m_rate->setText(RateType::inWords(m_numbers->rateType()));
}
