#pragma once

#include "app/Station.h"

#include <QDialog>

class BookerForm;
class QComboBox;

/// Asks who waits for an hour of one field and day, and puts them on the waiting list. Whoever opens it has verified
/// the staff member.
class frm_WaitingList : public QDialog
{
    Q_OBJECT

public:
    /// day "yyyy-mm-dd"
    frm_WaitingList(Station &station, const QString &staffName, const QString &day, int field,
                    QWidget *parent = nullptr);

    /// Chooses the wanted hour "hh:mm" or "hh:mm:ss" beforehand; an hour that is not offered changes nothing.
    void setWantedHour(const QString &hourText);

private:
    /// cmd_OK. After a database error the window stays, so that what was typed is not lost.
    void add();

    Station &m_station;
    QString m_staffName;
    QString m_day;
    int m_field;
    QComboBox *m_time; ///< made before the form, so that Tab reaches it first
    BookerForm *m_form;
};
