#include "booking/Booking.h"

#include "app/SqlText.h"
#include "booking/SlotOperation.h"

using namespace Qt::StringLiterals;

namespace {

/// The rows that one booking writes, on its own field and on the fields that share its ground.
class SlotBooking : private SlotOperation
{
public:
    SlotBooking(Station &station, const QString &staff, const BookingRequest &request)
        : SlotOperation(station, u"The booking of"_s, request.slot, staff), m_request(request)
    {
    }

    BookingOutcome book()
    {
        auto outcome = BookingOutcome::Booked;
        m_operation.run([&] {
            outcome = write();
            return outcome == BookingOutcome::Booked;
        });
        return outcome;
    }

private:
    BookingOutcome write()
    {
        if (isTaken() || isGroundTaken(m_operation, m_station, m_slot, GroundLook::Snapshot))
            return BookingOutcome::AlreadyBooked;
        if (m_request.fromWaitingList && !holdsWaitingEntry())
            return BookingOutcome::EntryGone;
        if (!insert())
            return BookingOutcome::AlreadyBooked;
        if (m_request.fromWaitingList)
            m_operation.execute(sql(u"DELETE FROM tbl_waitlist where w_id='%1'"_s, *m_request.fromWaitingList));
        writeRemark(
            m_station, m_operation,
            {m_slot, u' ' + m_request.booker.name + u' ' + m_request.booker.telephone, u"book"_s, m_staff, u"  "_s});
        for (const int partner : m_station.shared.partners(m_slot.field))
            bookPartner(slotOn(partner));
        if (const int parent = m_station.shared.parent(m_slot.field); parent >= 0)
            countOnParent(slotOn(parent));
        // Fields that share their ground hold a lock; on the others extra time may have been added since the look.
        if (m_station.shared.ground(m_slot.field) < 0 &&
            isGroundTaken(m_operation, m_station, m_slot, GroundLook::Locking))
            return BookingOutcome::AlreadyBooked;
        return BookingOutcome::Booked;
    }

    bool isTaken()
    {
        return m_operation
                   .query(sql(u"SELECT * FROM tbl_booking WHERE b_datetime='%1' AND b_field=%2"_s,
                              m_slot.dateTimeText(), m_slot.field))
                   .size() > 0;
    }

    bool holdsWaitingEntry()
    {
        return m_operation
                   .query(
                       sql(u"SELECT w_id FROM tbl_waitlist WHERE w_id='%1' FOR UPDATE"_s, *m_request.fromWaitingList))
                   .size() > 0;
    }

    /// False when another counter's booking of the slot stands already.
    bool insert()
    {
        const Booker &booker = m_request.booker;
        try {
            m_operation.execute(sql(u"INSERT INTO tbl_booking SET b_datetime='%1', b_bookertel='%2', b_bookerorg='%3', "
                                    "b_bookername='%4', b_field=%5, b_specialrate='%6'"_s,
                                    m_slot.dateTimeText(), quoted(booker.telephone), quoted(booker.organisation),
                                    quoted(booker.name), m_slot.field, booker.rateType));
        } catch (const DbError &error) {
            if (error.isDuplicateKey())
                return false;
            throw;
        }
        return true;
    }

    void bookPartner(const SlotKey &slot)
    {
        m_operation.execute(sql(u"INSERT INTO tbl_booking SET b_datetime='%1', b_bookertel='', b_bookerorg='', "
                                "b_bookername='Shared Booking', b_field=%2, b_specialrate=''"_s,
                                slot.dateTimeText(), slot.field));
        remark(slot, u" shared booking"_s, u"book"_s);
    }

    void countOnParent(const SlotKey &slot)
    {
        const QString condition = sql(u"b_datetime='%1' AND b_field=%2"_s, slot.dateTimeText(), slot.field);
        DbRows rows = m_operation.query(u"SELECT * FROM tbl_booking where "_s + condition);
        const int shared = rows.next() ? rows.number("b_shared") : 0;
        if (shared == 0)
            m_operation.execute(sql(u"INSERT INTO tbl_booking SET b_datetime='%1', b_bookertel='', b_bookerorg='', "
                                    "b_bookername= 'Partially Shared'  , b_shared= b_shared + 1, b_field=%2, "
                                    "b_specialrate=''"_s,
                                    slot.dateTimeText(), slot.field));
        else
            m_operation.execute(u"UPDATE tbl_booking SET b_shared= b_shared + 1 where "_s + condition);
        remark(slot, u" partially booked field "_s + QString::number(slot.field), u"book"_s);
    }

    const BookingRequest &m_request;
};

} // namespace

QString refusalText(BookingOutcome outcome)
{
    switch (outcome) {
    case BookingOutcome::PreviousEntry:
        return u"You cannot book previous entry"_s;
    case BookingOutcome::AlreadyBooked:
        return u"The field already being booked"_s;
    case BookingOutcome::EntryGone:
        return u"The waiting-list entry that you took is no longer on the list: it was booked or deleted since. "
               u"Nothing was booked."_s;
    case BookingOutcome::Booked:
        break;
    }
    return {};
}

BookingOutcome doBooking(Station &station, const QString &staff, const BookingRequest &request)
{
    if (hoursUntil(station.now(), request.slot.day, request.slot.hourText, station.hours()) < 0)
        return BookingOutcome::PreviousEntry;
    return SlotBooking(station, staff, request).book();
}

std::optional<Verification> startBooking(Station &station, const DaySelection &selection)
{
    for (const int index : selection.selected) {
        const DayRow &row = selection.row(index);
        auto outcome = BookingOutcome::Booked;
        if (hoursUntil(station.now(), selection.day, row.hourText(), station.hours()) < 0)
            outcome = BookingOutcome::PreviousEntry;
        else if (!row.isFree())
            outcome = BookingOutcome::AlreadyBooked;
        if (outcome != BookingOutcome::Booked) {
            station.prompts.refuse(refusalText(outcome));
            return std::nullopt;
        }
    }
    return station.prompts.verifyStaff(taskInWords(u"Book"_s, station.settings, selection));
}

void bookSelection(Station &station, const QString &staff, const DaySelection &selection, const Booker &booker,
                   std::vector<int> *handled)
{
    for (const int index : selection.selected) {
        const BookingOutcome outcome = doBooking(station, staff, {selection.slotOf(selection.row(index)), booker});
        if (handled)
            handled->push_back(index);
        if (outcome != BookingOutcome::Booked)
            station.prompts.refuse(refusalText(outcome));
    }
}
