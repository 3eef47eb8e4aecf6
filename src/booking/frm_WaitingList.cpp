#include "booking/frm_WaitingList.h"

#include "app/Errors.h"
#include "booking/BookerForm.h"
#include "booking/SlotWords.h"
#include "booking/WaitingList.h"
#include "look/DialogFrame.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

frm_WaitingList::frm_WaitingList(Station &station, const QString &staffName, const QString &day, int field,
                                 QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_staffName(staffName),
      m_day(day),
      m_field(field),
      m_time(new QComboBox(this)),
      m_form(new BookerForm(station, this))
{
    setObjectName(u"frm_WaitingList"_s);
    const QString title = u"Waiting list of "_s + station.settings.fieldName(field);
    setWindowTitle(title);
    m_time->setObjectName(u"cbo_Time"_s);
    m_time->setAccessibleName(u"Wanted hour"_s);
    for (const QString &hour : wantedHours(station.hours()))
        m_time->addItem(hour);
    m_form->addTopRow(new QLabel(u"Wanted &hour"_s), m_time);
    QPushButton *ok = frameDialog(*this, title, dayInWords(day), m_form, u"&Put on the list"_s);
    connect(ok, &QPushButton::clicked, this, &frm_WaitingList::add);
    connect(m_form, &BookerForm::completed, ok, &QPushButton::click);
}

void frm_WaitingList::setWantedHour(const QString &hourText)
{
    if (const int index = m_time->findText(hourText.left(5) + u":00"_s); index >= 0)
        m_time->setCurrentIndex(index);
}

void frm_WaitingList::add()
{
    if (const QString refusal = m_form->refusal(); !refusal.isEmpty()) {
        m_station.prompts.refuse(refusal);
        return;
    }
    const bool added = guarded(m_station.prompts, ErrorCode::Database, [this] {
        addWaitingEntry(m_station, m_staffName, m_day, m_time->currentText(), m_field, m_form->booker());
    });
    if (added) {
        m_form->forgetKept();
        accept();
    }
}
