#include "booking/Booking.h"

#include "app/SqlText.h"
#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

namespace {

QString slotCondition(const SlotKey &slot)
{
    return u"b_datetime='"_s + slot.dateTimeText() + u"' AND b_field="_s + QString::number(slot.field);
}

/// The rows that one booking writes, on its own field and on the fields that share its ground.
class SlotBooking
{
public:
    SlotBooking(Station &station, const QString &staff, const BookingRequest &request)
        : m_station(station),
          m_connection(station.database),
          m_staff(staff),
          m_request(request),
          m_slot{request.date, request.hour, request.field}
    {
    }

    bool isTaken()
    {
        return m_connection.query(u"SELECT * FROM tbl_booking WHERE "_s + slotCondition(m_slot)).size() > 0;
    }

    /// False when another counter's booking of the slot stands already.
    bool insert()
    {
        QString tel = m_request.tel;
        QString org = m_request.org;
        QString name = m_request.name;
        try {
            m_connection.execute(u"INSERT INTO tbl_booking SET b_datetime='"_s + m_slot.dateTimeText() +
                                 u"', b_bookertel='"_s + EscapeQuotes(tel) + u"', b_bookerorg='"_s + EscapeQuotes(org) +
                                 u"', b_bookername='"_s + EscapeQuotes(name) + u"', b_field="_s +
                                 QString::number(m_slot.field) + u", b_specialrate='"_s + m_request.rateType + u"'"_s);
        } catch (const DbError &error) {
            if (error.isDuplicateKey())
                return false;
            throw;
        }
        return true;
    }

    void takeOffWaitingList(const QString &entryId)
    {
        m_connection.execute(u"DELETE FROM tbl_waitlist where w_id='"_s + entryId + u"'"_s);
    }

    void writeBookingRemark()
    {
        writeRemark(m_station, m_connection,
                    {m_slot, u' ' + m_request.name + u' ' + m_request.tel, u"book"_s, m_staff, u"  "_s});
    }

    void bookPartner(int field)
    {
        const SlotKey slot{m_request.date, m_request.hour, field};
        m_connection.execute(u"INSERT INTO tbl_booking SET b_datetime='"_s + slot.dateTimeText() +
                             u"', b_bookertel='', b_bookerorg='', b_bookername='Shared Booking', b_field="_s +
                             QString::number(field) + u", b_specialrate=''"_s);
        writeRemark(m_station, m_connection, {slot, u" shared booking"_s, u"book"_s, m_staff});
    }

    void countOnParent(int field)
    {
        const SlotKey slot{m_request.date, m_request.hour, field};
        DbRows rows = m_connection.query(u"SELECT * FROM tbl_booking where "_s + slotCondition(slot));
        const int shared = rows.next() ? rows.number("b_shared") : 0;
        if (shared == 0)
            m_connection.execute(u"INSERT INTO tbl_booking SET b_datetime='"_s + slot.dateTimeText() +
                                 u"', b_bookertel='', b_bookerorg='', b_bookername= 'Partially Shared'  , b_shared= "
                                 u"b_shared + 1, b_field="_s +
                                 QString::number(field) + u", b_specialrate=''"_s);
        else
            m_connection.execute(u"UPDATE tbl_booking SET b_shared= b_shared + 1 where "_s + slotCondition(slot));
        writeRemark(m_station, m_connection,
                    {slot, u" partially booked field "_s + QString::number(field), u"book"_s, m_staff});
    }

private:
    Station &m_station;
    DbConnection m_connection;
    const QString &m_staff;
    const BookingRequest &m_request;
    SlotKey m_slot;
};

} // namespace

QString refusalText(BookingOutcome outcome)
{
    switch (outcome) {
    case BookingOutcome::PreviousEntry:
        return u"You cannot book previous entry"_s;
    case BookingOutcome::AlreadyBooked:
        return u"The field already being booked"_s;
    case BookingOutcome::Booked:
        break;
    }
    return {};
}

BookingOutcome doBooking(Station &station, BookingClipboard &clipboard, const QString &staff,
                         const BookingRequest &request)
{
    SlotBooking booking(station, staff, request);
    if (hoursUntil(station.now(), request.date, request.hour, station.hours()) < 0)
        return BookingOutcome::PreviousEntry;
    if (booking.isTaken() || !booking.insert())
        return BookingOutcome::AlreadyBooked;
    if (request.fromWaitingList) {
        booking.takeOffWaitingList(clipboard.waitingListId);
        clipboard.fromWaitingList = false;
    }
    booking.writeBookingRemark();
    for (const int partner : station.shared.partners(request.field))
        booking.bookPartner(partner);
    if (const int parent = station.shared.parent(request.field); parent >= 0)
        booking.countOnParent(parent);
    return BookingOutcome::Booked;
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

void bookSelection(Station &station, BookingClipboard &clipboard, const QString &staff, const DaySelection &selection,
                   const Booker &booker, bool fromWaitingList, std::vector<int> *handled)
{
    for (const int index : selection.selected) {
        const BookingOutcome outcome =
            doBooking(station, clipboard, staff,
                      {selection.day, selection.row(index).hourText(), booker.telephone, booker.organisation,
                       booker.name, selection.field, booker.rateType, fromWaitingList && clipboard.fromWaitingList});
        if (handled)
            handled->push_back(index);
        if (outcome != BookingOutcome::Booked)
            station.prompts.refuse(refusalText(outcome));
    }
}
