#include "booking/BookingClipboard.h"

#include "app/Operation.h"
#include "app/SqlText.h"
#include "booking/Ground.h"

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
        } catch (const std::exception &) {
            m_connection.drop(); // with the connection the server gives the lock back
        }
    }

private:
    DbConnection &m_connection;
};

QString reasonNotToCopy(const DaySelection &selection)
{
    const DayRow *row = selection.current < 0 ? nullptr : &selection.row(selection.current);
    if (!row || row->isFree())
        return u"You cannot copy empty slot"_s;
    if (row->isGroundTaken)
        return groundTakenText();
    if (row->isExtraTime())
        return u"The slot is an extra time of previous slot, use the previous slot to copy"_s;
    if (row->isSharedBooking() || row->isPartiallyShared())
        return u"You cannot copy shared booking"_s;
    return {};
}

void insertCopy(DbConnection &connection, const QString &table, const SlotKey &slot, const Booker &booker)
{
    const TableLock lock(connection, table);
    connection.execute(
        sql(u"INSERT INTO %1 SET b_datetime='%2', b_bookertel='%3', b_bookerorg='%4', b_bookername='%5', "
            "b_field=%6, b_specialrate='%7'"_s,
            table, slot.dateTimeText(), quoted(booker.telephone), quoted(booker.organisation), quoted(booker.name),
            slot.field, booker.rateType));
}

void insertCut(Operation &operation, const WaitingEntry &entry)
{
    operation.insertProof(sql(u"INSERT INTO tbl_waitlist_clipboard SET w_datetime='%1', w_bookertel='%2', "
                              "w_bookerorg='%3', w_bookername='%4', w_field=%5, w_specialrate='%6', w_staffname='%7'"_s,
                              entry.dateTimeText, quoted(entry.booker.telephone), quoted(entry.booker.organisation),
                              quoted(entry.booker.name), entry.field, entry.booker.rateType, quoted(entry.staffName)),
                          u"tbl_waitlist_clipboard"_s, u"w_id"_s,
                          sql(u"w_datetime='%1' AND w_field=%2 AND w_bookername='%3'"_s, entry.dateTimeText,
                              entry.field, quoted(entry.booker.name)));
}

// The booker of a slot, whatever marks of shared ground stand beside it.
std::optional<Booker> bookerAmong(DbRows &rows)
{
    std::optional<Booker> found;
    while (rows.next())
        if (const Booker booker = bookerOf(rows); takesPlaceOf(found ? found->name : QString(), booker.name))
            found = booker;
    return found;
}

} // namespace

QString clipboardTable(const Station &station)
{
    return counterTable(u"tbl_booking_clipboard"_s, station.settings.ThisCounter);
}

Booker bookerOf(const DbRows &row)
{
    return {row.text("b_bookername"), row.text("b_bookerorg"), row.text("b_bookertel"), row.text("b_specialrate")};
}

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
    DbRows rows = connection.query(
        sql(u"SELECT * FROM tbl_booking where b_datetime='%1' AND b_field=%2"_s, slot.dateTimeText(), slot.field));
    const std::optional<Booker> booker = bookerAmong(rows);
    if (!booker || isMarkerText(booker->name)) {
        station.prompts.refuse(booker ? u"You cannot copy shared booking"_s : u"You cannot copy empty slot"_s);
        return false;
    }
    insertCopy(connection, table, slot, *booker);
    clipboard.copied = slot;
    clipboard.copiedBooker = *booker;
    return true;
}

bool cutWaitingEntry(Station &station, BookingClipboard &clipboard, const QString &id)
{
    if (id.isEmpty()) {
        station.prompts.refuse(u"You cannot copy empty slot"_s);
        return false;
    }
    clipboard.fromWaitingList = false;
    Operation operation(station, u"Taking the waiting-list entry"_s);
    const bool taken = operation.run([&] {
        operation.execute(u"DELETE FROM tbl_waitlist_clipboard WHERE w_id>0"_s);
        DbRows rows = operation.query(sql(u"SELECT * FROM tbl_waitlist where w_id='%1'"_s, id));
        if (!rows.next())
            return false;
        clipboard.cut = waitingEntryOf(rows);
        insertCut(operation, clipboard.cut);
        return true;
    });
    if (!taken) {
        station.prompts.inform(u"This entry is no longer on the waiting list."_s);
        return false;
    }
    clipboard.waitingListId = id;
    clipboard.fromWaitingList = true;
    return true;
}
