#pragma once

#include <QStringList>

struct Station;

/// Who stands at the counter, and what leaves its drawer. Amounts are read as numbers, 0 for what is none.

/// tbl_log: somebody was verified and wants to take this counter over; the drawer opens.
void requestHandOver(Station &station, const QString &login);

/// What is done once when it is tried again after an answer that was lost: it remembers the moments of its attempts.
class CashRecord
{
public:
    explicit CashRecord(Station &station) : m_station(station) {}

    /// Gives the counter to the staff member with this much money in the drawer, all or nothing: tbl_log, tbl_system
    /// and the last login (tbl_staff), then CurrentStaff. Throws NotDone and DbError.
    void handOver(const QString &login, const QString &amount);
    /// tbl_log: this much was taken out of the drawer. Throws NotDone and DbError: money is not handed over untraced.
    void collect(const QString &amount);

private:
    class Attempt;

    Station &m_station;
    QStringList m_tried;
};
