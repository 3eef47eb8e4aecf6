#include "booking/WaitingList.h"

#include "app/BusinessDay.h"
#include "app/Formats.h"
#include "app/Operation.h"
#include "app/SqlText.h"

using namespace Qt::StringLiterals;

namespace {

std::vector<WaitingEntry> readEntries(Database &database, const QString &sql)
{
    DbConnection connection(database);
    DbRows rows = connection.query(sql);
    std::vector<WaitingEntry> entries;
    while (rows.next())
        entries.push_back(waitingEntryOf(rows));
    return entries;
}

} // namespace

WaitingEntry waitingEntryOf(const DbRows &row)
{
    return {row.text("w_id"),
            {row.text("w_bookername"), row.text("w_bookerorg"), row.text("w_bookertel"), row.text("w_specialrate")},
            row.text("w_datetime"),
            row.number("w_field"),
            row.text("w_staffname")};
}

std::vector<WaitingEntry> readWaitingList(Database &database, const QString &day, int field)
{
    return readEntries(database,
                       sql(u"SELECT * from tbl_waitlist WHERE w_datetime LIKE '%1%' AND w_field='%2';"_s, day, field));
}

std::vector<WaitingEntry> waitingFor(Database &database, const SlotKey &slot)
{
    return readEntries(database, sql(u"SELECT * from tbl_waitlist WHERE w_datetime='%1' AND w_field=%2 ORDER BY w_id"_s,
                                     slot.dateTimeText(), slot.field));
}

std::vector<QString> wantedHours(WorkingHours hours)
{
    std::vector<QString> texts;
    for (const int hour : hoursOfDay(hours))
        texts.push_back(formatTwoDigits(hour) + u":00:00"_s);
    return texts;
}

void addWaitingEntry(Station &station, const QString &staff, const QString &day, const QString &time, int field,
                     const Booker &booker)
{
    Operation operation(station, u"The waiting-list entry of "_s + booker.name);
    operation.run([&] {
        operation.insertProof(
            sql(u"INSERT INTO tbl_waitlist SET w_datetime='%1 %2', w_bookertel='%3', w_bookerorg='%4', "
                "w_bookername='%5', w_field=%6, w_specialrate='%7', w_staffname='%8'"_s,
                day, time, quoted(booker.telephone), quoted(booker.organisation), quoted(booker.name), field,
                booker.rateType, quoted(staff)),
            u"tbl_waitlist"_s, u"w_id"_s,
            sql(u"w_datetime='%1 %2' AND w_field=%3 AND w_bookername='%4'"_s, day, time, field, quoted(booker.name)));
        return true;
    });
}

bool deleteWaitingEntry(Station &station, const QString &id)
{
    if (!station.prompts.confirm(u"Confirm delete?"_s, u"Important"_s) ||
        !station.prompts.verifyStaff(u"Delete an entry of the waiting list"_s))
        return false;
    Operation operation(station, u"The deletion of the waiting-list entry"_s);
    return operation.run([&] {
        operation.execute(sql(u"DELETE FROM tbl_waitlist where w_id='%1'"_s, id));
        return true;
    });
}
