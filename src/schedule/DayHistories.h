#pragma once

#include "app/Station.h"

#include <map>

/// What was done to the hours of the day that is shown, as the moving pointer asks for it: each is read once.
class DayHistories
{
public:
    explicit DayHistories(Station &station) : m_station(station) {}

    /// The day was read anew. Nothing is asked for when that failed, so that the pointer does not repeat an error; nor
    /// after an error here.
    void forget(bool isReadable);
    /// The history of a slot, which stands in this row (tbl_remark, tbl_booking); empty when it cannot be read.
    QString of(int row, const SlotKey &slot);

private:
    Station &m_station;
    std::map<int, QString> m_read; ///< by row
    bool m_isReadable = false;
};
