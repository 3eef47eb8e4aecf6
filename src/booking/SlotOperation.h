#pragma once

#include "app/Operation.h"
#include "booking/Ground.h"
#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"

/// One change of a slot and of what shares its ground, by a staff member: the operation with the locks of that ground.
class SlotOperation
{
protected:
    /// `words` begin what the operation is called: "The booking of".
    SlotOperation(Station &station, const QString &words, const SlotKey &slot, QString staff, bool andNextHour = false)
        : m_station(station),
          m_slot(slot),
          m_staff(std::move(staff)),
          m_operation(station, words + u' ' + slotInWords(station, slot), groundLocks(station, slot, andNextHour))
    {
    }

    /// The same hour on another field.
    [[nodiscard]] SlotKey slotOn(int field) const { return {m_slot.day, m_slot.hourText, field}; }

    void remark(const SlotKey &slot, const QString &text, const QString &job)
    {
        writeRemark(m_station, m_operation, {slot, text, job, m_staff});
    }

    Station &m_station;
    const SlotKey m_slot;
    const QString m_staff;
    Operation m_operation;
};
