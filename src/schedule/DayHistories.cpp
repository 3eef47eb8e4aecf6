#include "schedule/DayHistories.h"

#include "app/Errors.h"
#include "booking/RemarkLog.h"

void DayHistories::forget(bool isReadable)
{
    m_read.clear();
    m_isReadable = isReadable;
}

QString DayHistories::of(int row, const SlotKey &slot)
{
    const auto known = m_read.find(row);
    if (known != m_read.cend())
        return known->second;
    if (!m_isReadable || m_station.database.isWaiting())
        return {};
    QString history;
    m_isReadable = quietly(m_station.database, [&] {
        history = slotHistory(m_station.database, slot);
        m_read.emplace(row, history);
    });
    return history;
}
