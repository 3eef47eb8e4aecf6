#pragma once

#include "app/Station.h"
#include "booking/WaitingList.h"

#include <QFrame>

class QVBoxLayout;

/// Tells, without blocking, that hours became free which somebody on the waiting list wants: the slot, name
/// and telephone of each, and a button that takes the entry for pasting.
class FreeHourNotice : public QFrame
{
    Q_OBJECT

public:
    explicit FreeHourNotice(QWidget *parent = nullptr);

    /// Shows who waits for these slots (tbl_waitlist); hides itself when nobody does. Throws DbError.
    void announce(Station &station, const std::vector<SlotKey> &freed);

signals:
    void entryWanted(const QString &waitingListId);

private:
    void addLine(const WaitingEntry &entry, const QString &fieldName);
    void empty();

    QVBoxLayout *m_lines;
};
