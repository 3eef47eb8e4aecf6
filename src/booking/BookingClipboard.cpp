#include "booking/BookingClipboard.h"

#include "app/SqlText.h"
#include "booking/Booking.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

namespace {

/// Holds the write lock of one table; gives it back also when a statement in between fails.
class TableLock
{
public:
    TableLock(DbConnection &connection, const QString &table) : m_connection(connection)
    {
        m_connection.execute(u"LOCK TABLES "_s + table + u" WRITE"_s);
    }
    TableLock(const TableLock &) = delete;
    TableLock &operator=(const TableLock &) = delete;
    ~TableLock()
    {
        try {
            m_connection.execute(u"UNLOCK TABLES"_s);
        } catch (const DbError &) {
            // The server gives the lock back when it loses the connection.
        }
    }

private:
    DbConnection &m_connection;
};

QString clipboardTable(const Station &station)
{
    return u"tbl_booking_clipboard"_s + QString::number(station.settings.ThisCounter);
}

QString slotCondition(const SlotKey &slot)
{
    return u" where b_datetime='"_s + slot.dateTimeText() + u"' AND b_field="_s + QString::number(slot.field);
}

Booker bookerOf(const DbRows &row)
{
    return {row.text("b_bookername"), row.text("b_bookerorg"), row.text("b_bookertel"), row.text("b_specialrate")};
}

QString reasonNotToCopy(const DaySelection &selection)
{
    const DayRow *row = selection.current < 0 ? nullptr : &selection.row(selection.current);
    if (!row || row->isFree())
        return u"You cannot copy empty slot"_s;
    if (row->isExtraTime())
        return u"The slot is an extra time of previous slot, use the previous slot to copy"_s;
    if (row->isSharedBooking() || row->isPartiallyShared())
        return u"You cannot copy shared booking"_s;
    return {};
}

void insertCopy(DbConnection &connection, const QString &table, const SlotKey &slot, Booker booker)
{
    const TableLock lock(connection, table);
    connection.execute(u"INSERT INTO "_s + table + u" SET b_datetime='"_s + slot.dateTimeText() +
                       u"', b_bookertel='"_s + EscapeQuotes(booker.telephone) + u"', b_bookerorg='"_s +
                       EscapeQuotes(booker.organisation) + u"', b_bookername='"_s + EscapeQuotes(booker.name) +
                       u"', b_field="_s + QString::number(slot.field) + u", b_specialrate='"_s + booker.rateType +
                       u"'"_s);
}

void insertCut(DbConnection &connection, WaitingEntry entry)
{
    connection.execute(u"INSERT INTO tbl_waitlist_clipboard SET w_datetime='"_s + entry.dateTimeText +
                       u"', w_bookertel='"_s + EscapeQuotes(entry.booker.telephone) + u"', w_bookerorg='"_s +
                       EscapeQuotes(entry.booker.organisation) + u"', w_bookername='"_s +
                       EscapeQuotes(entry.booker.name) + u"', w_field="_s + QString::number(entry.field) +
                       u", w_specialrate='"_s + entry.booker.rateType + u"', w_staffname='"_s +
                       EscapeQuotes(entry.staffName) + u"'"_s);
}

QString waitingEntryQuery(const QString &id)
{
    return u"SELECT * FROM tbl_waitlist where w_id='"_s + id + u"'"_s;
}

bool isOnWaitingList(DbConnection &connection, const QString &id)
{
    return connection.query(waitingEntryQuery(id)).size() > 0;
}

// The waiting-list clipboard is one table for all counters: its row must be the entry that this counter cut. Another
// counter may have cut the same entry and booked it already, or deleted it.
std::optional<Booker> cutBooker(Station &station, const BookingClipboard &clipboard)
{
    DbConnection connection(station.database);
    DbRows rows = connection.query(u"SELECT * FROM tbl_waitlist_clipboard"_s);
    std::optional<Booker> booker;
    while (rows.next() && !booker) {
        WaitingEntry held = waitingEntryOf(rows);
        held.id = clipboard.waitingListId;
        if (held == clipboard.cut)
            booker = held.booker;
    }
    if (!booker) {
        station.prompts.inform(u"The waiting-list entry that you took is no longer held for pasting: another counter "
                               u"has taken an entry since. Nothing was booked. Take the entry from the list again."_s);
    } else if (clipboard.fromWaitingList && !isOnWaitingList(connection, clipboard.waitingListId)) {
        station.prompts.inform(u"The waiting-list entry that you took is no longer on the list: it was booked or "
                               u"deleted since. Nothing was booked."_s);
        return std::nullopt;
    }
    return booker;
}

std::optional<Booker> copiedBooker(Station &station, const BookingClipboard &clipboard)
{
    DbConnection connection(station.database);
    DbRows rows =
        connection.query(u"SELECT * FROM "_s + clipboardTable(station) + slotCondition(clipboard.copied.value()));
    if (rows.next())
        return bookerOf(rows);
    station.prompts.inform(u"The copied booking is no longer on this counter's clipboard. Nothing was booked. "
                           u"Copy the booking again."_s);
    return std::nullopt;
}

} // namespace

bool copySlot(Station &station, BookingClipboard &clipboard, const DaySelection &selection)
{
    if (const QString reason = reasonNotToCopy(selection); !reason.isEmpty()) {
        station.prompts.refuse(reason);
        return false;
    }
    const SlotKey slot = selection.slotOf(selection.row(selection.current));
    const QString table = clipboardTable(station);
    DbConnection connection(station.database);
    clipboard.copied.reset();
    clipboard.fromWaitingList = false;
    connection.execute(u"TRUNCATE TABLE "_s + table);
    DbRows rows = connection.query(u"SELECT * FROM tbl_booking"_s + slotCondition(slot));
    if (!rows.next()) {
        station.prompts.refuse(u"You cannot copy empty slot"_s);
        return false;
    }
    const Booker booker = bookerOf(rows);
    insertCopy(connection, table, slot, booker);
    clipboard.copied = slot;
    clipboard.copiedBooker = booker;
    return true;
}

bool cutWaitingEntry(Station &station, BookingClipboard &clipboard, const QString &id)
{
    if (id.isEmpty()) {
        station.prompts.refuse(u"You cannot copy empty slot"_s);
        return false;
    }
    DbConnection connection(station.database);
    clipboard.fromWaitingList = false;
    connection.execute(u"DELETE FROM tbl_waitlist_clipboard WHERE w_id>0"_s);
    DbRows rows = connection.query(waitingEntryQuery(id));
    if (!rows.next()) {
        station.prompts.inform(u"This entry is no longer on the waiting list."_s);
        return false;
    }
    clipboard.cut = waitingEntryOf(rows);
    clipboard.waitingListId = id;
    insertCut(connection, clipboard.cut);
    clipboard.fromWaitingList = true;
    return true;
}

std::optional<Booker> clipboardBooker(Station &station, const BookingClipboard &clipboard, ClipboardSource source)
{
    switch (source) {
    case ClipboardSource::WaitingList:
        return cutBooker(station, clipboard);
    case ClipboardSource::CopiedSlot:
        return copiedBooker(station, clipboard);
    case ClipboardSource::Nothing:
        break;
    }
    station.prompts.inform(u"There is nothing to paste: copy a booking or take a waiting-list entry first."_s);
    return std::nullopt;
}

bool pasteSelection(Station &station, BookingClipboard &clipboard, const DaySelection &selection)
{
    const auto booker = clipboardBooker(station, clipboard, clipboard.source());
    if (!booker)
        return false;
    const auto verification = station.prompts.verifyStaff(taskInWords(u"Paste on"_s, station.settings, selection));
    if (!verification)
        return false;
    bookSelection(station, clipboard, verification->staffName, selection, *booker, clipboard.fromWaitingList);
    return true;
}
