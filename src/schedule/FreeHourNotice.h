#pragma once

#include "app/Station.h"
#include "booking/WaitingList.h"

#include <QFrame>

class QVBoxLayout;

/// Tells, without blocking, that hours became free which somebody on the waiting list wants: a line with name and
/// telephone for each, and a button that takes the entry for pasting.
class FreeHourNotice : public QFrame
{
    Q_OBJECT

public:
    explicit FreeHourNotice(QWidget *parent = nullptr);

    /// Shows who waits for these slots (tbl_waitlist); hides itself when nobody does. Throws DbError.
    void announce(Database &database, const std::vector<SlotKey> &freed);

signals:
    void entryWanted(const QString &waitingListId);

private:
    void addLine(const WaitingEntry &entry);
    void empty();

    QVBoxLayout *m_lines;
};
