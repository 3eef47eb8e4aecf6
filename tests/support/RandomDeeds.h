#pragma once

#include "support/DeedCounter.h"

#include <QRandomGenerator>

/// What comes into the head of the person at a counter, from a seed: deeds for DeedCounter::act(), with names that no
/// other seed gives.
class RandomDeeds
{
public:
    /// With `sells` hours are sold, too: then nobody can clear them any more.
    RandomDeeds(DeedCounter &counter, quint32 seed, QStringList hours, int fieldCount, bool sells = false);

    /// Empty when there is nothing that it could be done to, or the server is away. Reads tbl_booking.
    QString next();

private:
    int below(int end) { return m_random.bounded(end); }
    QString anySlot();
    QString anyBooker();

    DeedCounter &m_counter;
    QRandomGenerator m_random;
    QStringList m_hours;
    int m_fieldCount;
    bool m_sells;
    QString m_prefix;
    int m_count = 0;
    bool m_cuts = false; ///< what was put on the waiting list is taken next
};
