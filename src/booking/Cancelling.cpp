#include "booking/Cancelling.h"

#include "app/FieldLengths.h"
#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

namespace {

const QString cancelJob = u"cancel"_s;

/// Deletes the rows of one booking, on its own field and on the fields that share its ground.
class SlotCancelling
{
public:
    SlotCancelling(Station &station, const QString &staff, const CancelRequest &request, std::vector<SlotKey> *freed)
        : m_station(station), m_connection(station.database), m_staff(staff), m_request(request), m_freed(freed)
    {
    }

    CancelOutcome cancel()
    {
        const SlotKey slot = slotOn(m_request.field);
        const QString field = QString::number(slot.field);
        DbRows rows = m_connection.query(u"SELECT * FROM tbl_booking WHERE b_datetime='"_s + slot.dateTimeText() +
                                         u"' AND b_field="_s + field);
        if (!rows.next())
            return CancelOutcome::FieldEmpty;
        if (rows.amount("b_paid") > 0)
            return CancelOutcome::PaidItem;
        m_connection.execute(u"DELETE FROM tbl_booking where b_datetime='"_s + slot.dateTimeText() +
                             u"' AND  b_field="_s + field);
        becameFree(slot);
        writeRemark(m_station, m_connection, {slot, m_request.reason, cancelJob, m_staff});
        for (const int partner : m_station.shared.partners(m_request.field))
            freePartner(slotOn(partner));
        if (const int parent = m_station.shared.parent(m_request.field); parent >= 0)
            countDownOnParent(slotOn(parent));
        return CancelOutcome::Cancelled;
    }

private:
    [[nodiscard]] SlotKey slotOn(int field) const { return {m_request.date, m_request.hour, field}; }

    void becameFree(const SlotKey &slot)
    {
        if (m_freed)
            m_freed->push_back(slot);
    }

    void freePartner(const SlotKey &slot)
    {
        m_connection.execute(u"DELETE FROM tbl_booking WHERE b_datetime='"_s + slot.dateTimeText() +
                             u"' AND b_field="_s + QString::number(slot.field));
        becameFree(slot);
        writeRemark(m_station, m_connection, {slot, u" shared booking"_s, cancelJob, m_staff});
    }

    void countDownOnParent(const SlotKey &slot)
    {
        const QString field = QString::number(slot.field);
        const QString condition = u" where b_datetime='"_s + slot.dateTimeText() + u"' AND b_field="_s + field;
        DbRows rows = m_connection.query(u"SELECT * FROM tbl_booking"_s + condition);
        const int shared = rows.next() ? rows.number("b_shared") : 0;
        if (shared == 1) {
            m_connection.execute(u"DELETE FROM tbl_booking WHERE b_datetime='"_s + slot.dateTimeText() +
                                 u"' AND b_field="_s + field);
            becameFree(slot);
        } else {
            m_connection.execute(u"UPDATE tbl_booking SET b_shared=b_shared - 1"_s + condition);
        }
        writeRemark(m_station, m_connection, {slot, u" partially booked field "_s + field, cancelJob, m_staff});
    }

    Station &m_station;
    DbConnection m_connection;
    const QString &m_staff;
    const CancelRequest &m_request;
    std::vector<SlotKey> *m_freed;
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
    return refusalText(markOutcome(row.booker));
}

void tell(Prompts &prompts, CancelOutcome outcome)
{
    const QString text = refusalText(outcome);
    if (outcome == CancelOutcome::PaidItem)
        prompts.inform(text);
    else if (!text.isEmpty())
        prompts.refuse(text);
}

} // namespace

QString refusalText(CancelOutcome outcome)
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
    case CancelOutcome::Cancelled:
    case CancelOutcome::NoReason:
        break;
    }
    return {};
}

CancelOutcome doCancel(Station &station, const QString &staff, const CancelRequest &request,
                       std::vector<SlotKey> *freed)
{
    if (hoursUntil(station.now(), request.date, request.hour, station.hours()) < 0)
        return CancelOutcome::PreviousEntry;
    if (const CancelOutcome outcome = markOutcome(request.booker); outcome != CancelOutcome::Cancelled)
        return outcome;
    if (request.reason.isEmpty())
        return CancelOutcome::NoReason;
    return SlotCancelling(station, staff, request, freed).cancel();
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
        const CancelOutcome outcome =
            doCancel(station, verification->staffName,
                     {selection.day, row.hourText(), row.booker, selection.field, reason}, &freed);
        const auto next = std::size_t(index) + 1;
        if (outcome == CancelOutcome::Cancelled && next < selection.rows.size() && selection.rows[next].isExtraTime())
            freed.push_back(selection.slotOf(selection.rows[next]));
        tell(station.prompts, outcome);
    }
}
