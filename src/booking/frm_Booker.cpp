#include "booking/frm_Booker.h"

#include "app/Errors.h"
#include "booking/BookerForm.h"
#include "booking/SlotWords.h"
#include "look/DialogFrame.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

frm_Booker::frm_Booker(Station &station, BookingClipboard &clipboard, Verification staff, DaySelection selection,
                       QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_clipboard(clipboard),
      m_staff(std::move(staff)),
      m_selection(std::move(selection)),
      m_form(new BookerForm(station, this))
{
    setObjectName(u"frm_Booker"_s);
    setWindowTitle(u"Booking Field "_s + QString::number(m_selection.field) + u" from "_s +
                   m_selection.row(m_selection.selected.at(0)).hourRange);
    const QString heading = station.settings.fieldName(m_selection.field) + u", "_s + hoursInWords(m_selection);
    QPushButton *ok = frameDialog(*this, heading, dayInWords(m_selection.day), m_form, u"&Book"_s);
    connect(ok, &QPushButton::clicked, this, &frm_Booker::book);
}

void frm_Booker::book()
{
    if (!m_form->hasName()) {
        m_station.prompts.refuse(u"Please enter booker's name!"_s);
        return;
    }
    std::vector<int> handled;
    const bool booked = guarded(m_station.prompts, ErrorCode::LoadingForm, [&] {
        bookSelection(m_station, m_clipboard, m_staff.staffName, m_selection, m_form->booker(), false, &handled);
    });
    if (booked) {
        accept();
        return;
    }
    for (const int index : handled)
        std::erase(m_selection.selected, index);
    Q_EMIT failed();
}
