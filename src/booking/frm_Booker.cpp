#include "booking/frm_Booker.h"

#include "app/Errors.h"
#include "booking/BookerForm.h"
#include "booking/SlotWords.h"
#include "look/DialogFrame.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

frm_Booker::frm_Booker(Station &station, Verification staff, DaySelection selection, QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_staff(std::move(staff)),
      m_selection(std::move(selection)),
      m_form(new BookerForm(station, this))
{
    setObjectName(u"frm_Booker"_s);
    setWindowTitle(u"Booking Field "_s + QString::number(m_selection.field + 1) + u" from "_s +
                   m_selection.row(m_selection.selected.at(0)).hourRange);
    const QString heading = station.settings.fieldName(m_selection.field) + u", "_s + hoursInWords(m_selection);
    QPushButton *ok = frameDialog(*this, heading, dayInWords(m_selection.day), m_form, u"&Book"_s);
    connect(ok, &QPushButton::clicked, this, &frm_Booker::book);
    connect(m_form, &BookerForm::completed, ok, &QPushButton::click);
}

void frm_Booker::book()
{
    if (const QString refusal = m_form->refusal(); !refusal.isEmpty()) {
        m_station.prompts.refuse(refusal);
        return;
    }
    std::vector<int> handled;
    const bool booked = guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        bookSelection(m_station, m_staff.staffName, m_selection, m_form->booker(), &handled);
    });
    if (booked) {
        m_form->forgetKept();
        accept();
        return;
    }
    for (const int index : handled)
        std::erase(m_selection.selected, index);
    Q_EMIT failed();
}
