#include "booking/Cancelling.h"

#include "app/FieldLengths.h"
#include "app/SqlText.h"
#include "booking/SlotOperation.h"

using namespace Qt::StringLiterals;

namespace {

const QString cancelJob = u"cancel"_s;

/// Deletes the rows of one booking, on its own field and on the fields that share its ground.
class SlotCancelling : private SlotOperation
{
public:
    SlotCancelling(Station &station, const QString &staff, const CancelRequest &request)
        : SlotOperation(station, u"The clearing of"_s, request.slot, staff), m_request(request)
    {
    }

    Cancelling cancel()
    {
        m_operation.run([this] {
            m_result = {};
            m_result.outcome = write();
            return m_result.outcome == CancelOutcome::Cancelled;
        });
        return m_result;
    }

private:
    CancelOutcome write()
    {
        const auto holder = holdSlot(m_operation, m_slot);
        DbRows rows = m_operation.query(sql(u"SELECT * FROM tbl_booking WHERE b_datetime='%1' AND b_field=%2"_s,
                                            m_slot.dateTimeText(), m_slot.field));
        if (!holder || !rows.next())
            return CancelOutcome::FieldEmpty;
        if (holder->name != m_request.booker) {
            m_result.holder = holder->name;
            return CancelOutcome::ChangedMeanwhile;
        }
        if (holder->isPaid)
            return CancelOutcome::PaidItem;
        m_operation.execute(sql(u"DELETE FROM tbl_booking where b_datetime='%1' AND  b_field=%2"_s,
                                m_slot.dateTimeText(), m_slot.field));
        m_result.freed.push_back(m_slot);
        remark(m_slot, m_request.reason, cancelJob);
        for (const int partner : m_station.shared.partners(m_slot.field))
            freePartner(slotOn(partner));
        if (const int parent = m_station.shared.parent(m_slot.field); parent >= 0)
            countDownOnParent(slotOn(parent));
        return CancelOutcome::Cancelled;
    }

    void deleteRows(const SlotKey &slot)
    {
        m_operation.execute(
            sql(u"DELETE FROM tbl_booking WHERE b_datetime='%1' AND b_field=%2"_s, slot.dateTimeText(), slot.field));
        m_result.freed.push_back(slot);
    }

    void freePartner(const SlotKey &slot)
    {
        deleteRows(slot);
        remark(slot, u" shared booking"_s, cancelJob);
    }

    void countDownOnParent(const SlotKey &slot)
    {
        const QString condition = sql(u" where b_datetime='%1' AND b_field=%2"_s, slot.dateTimeText(), slot.field);
        DbRows rows = m_operation.query(u"SELECT * FROM tbl_booking"_s + condition);
        const int shared = rows.next() ? rows.number("b_shared") : 0;
        if (shared == 1)
            deleteRows(slot);
        else
            m_operation.execute(u"UPDATE tbl_booking SET b_shared=b_shared - 1"_s + condition);
        remark(slot, u" partially booked field "_s + QString::number(slot.field), cancelJob);
    }

    const CancelRequest &m_request;
    Cancelling m_result;
};

/// Why the texts of a booker cell may not be cleared; Cancelled when they may.
CancelOutcome markOutcome(const QString &booker)
{
    if (booker.contains(BookerMark::extraTime))
        return CancelOutcome::ExtraTime;
    if (booker.contains(BookerMark::partiallyShared))
        return CancelOutcome::PartiallyShared;
    if (booker.contains(BookerMark::sharedBooking))
        return CancelOutcome::SharedBooking;
    return CancelOutcome::Cancelled;
}

QString reasonNotToClear(const DayRow &row)
{
    if (row.isPaid())
        return u"You cannot delete paid slot"_s;
    if (row.isFree())
        return u"You cannot delete an empty slot"_s;
    if (row.isGroundTaken)
        return groundTakenText();
    return Cancelling{markOutcome(row.booker)}.refusalText();
}

/// Where extra time ran to: the hour itself, and on the parts of the field.
std::vector<SlotKey> extraTimeGround(const Station &station, const SlotKey &hour)
{
    std::vector<SlotKey> ground{hour};
    for (const int partner : station.shared.partners(hour.field))
        ground.push_back({hour.day, hour.hourText, partner});
    return ground;
}

void tell(Prompts &prompts, const Cancelling &result)
{
    const QString text = result.refusalText();
    if (result.outcome == CancelOutcome::PaidItem)
        prompts.inform(text);
    else if (!text.isEmpty())
        prompts.refuse(text);
}

} // namespace

QString Cancelling::refusalText() const
{
    switch (outcome) {
    case CancelOutcome::PreviousEntry:
        return u"You delete previous entry"_s;
    case CancelOutcome::ExtraTime:
        return u"Use previous slot to delete extra time."_s;
    case CancelOutcome::PartiallyShared:
        return u"Delete individual slots"_s;
    case CancelOutcome::SharedBooking:
        return u"Please delete main slots"_s;
    case CancelOutcome::FieldEmpty:
        return u"The field is empty"_s;
    case CancelOutcome::PaidItem:
        return u"You cannot delete paid item"_s;
    case CancelOutcome::ChangedMeanwhile:
        return changedMeanwhile(holder);
    case CancelOutcome::Cancelled:
    case CancelOutcome::NoReason:
        break;
    }
    return {};
}

Cancelling doCancel(Station &station, const QString &staff, const CancelRequest &request)
{
    if (hoursUntil(station.now(), request.slot.day, request.slot.hourText, station.hours()) < 0)
        return {CancelOutcome::PreviousEntry};
    if (const CancelOutcome outcome = markOutcome(request.booker); outcome != CancelOutcome::Cancelled)
        return {outcome};
    if (request.reason.isEmpty())
        return {CancelOutcome::NoReason};
    return SlotCancelling(station, staff, request).cancel();
}

void clearSelection(Station &station, const DaySelection &selection, std::vector<SlotKey> &freed)
{
    for (const int index : selection.selected) {
        if (const QString reason = reasonNotToClear(selection.row(index)); !reason.isEmpty()) {
            station.prompts.refuse(reason);
            return;
        }
    }
    const auto verification = station.prompts.verifyStaff(taskInWords(u"Clear"_s, station.settings, selection));
    if (!verification)
        return;
    const QString reason =
        station.prompts.askText(u"Enter reason why the entry need to be cleared"_s, FieldLengths::reason);
    if (reason.isEmpty())
        return;
    for (const int index : selection.selected) {
        const DayRow &row = selection.row(index);
        const Cancelling result =
            doCancel(station, verification->staffName, {selection.slotOf(row), row.booker, reason});
        freed.insert(freed.end(), result.freed.cbegin(), result.freed.cend());
        const auto next = std::size_t(index) + 1;
        if (!result.freed.empty() && next < selection.rows.size() && selection.rows[next].isExtraTime())
            for (const SlotKey &hour : extraTimeGround(station, selection.slotOf(selection.rows[next])))
                freed.push_back(hour);
        tell(station.prompts, result);
    }
}
