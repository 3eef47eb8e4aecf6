#pragma once

#include "booking/Booking.h"

#include <QDialog>

class BookerForm;

/// Asks who books the chosen hours of one field and books them. The staff member is verified already.
class frm_Booker : public QDialog
{
    Q_OBJECT

public:
    /// At least one row of the selection is selected.
    frm_Booker(Station &station, Verification staff, DaySelection selection, QWidget *parent = nullptr);

signals:
    /// The booking ended in an error that staff have seen; some hours may be booked.
    void failed();

private:
    /// cmd_OK. After a database error the window stays, so that what was typed is not lost; the hours that were booked
    /// before it are not tried again.
    void book();

    Station &m_station;
    Verification m_staff;
    DaySelection m_selection;
    BookerForm *m_form;
};
