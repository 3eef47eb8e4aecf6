#include "booking/WaitingList.h"

#include "app/BusinessDay.h"
#include "app/Formats.h"
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
    return readEntries(database, u"SELECT * from tbl_waitlist WHERE w_datetime LIKE '"_s + day + u"%' AND w_field='"_s +
                                     QString::number(field) + u"';"_s);
}

std::vector<WaitingEntry> waitingFor(Database &database, const SlotKey &slot)
{
    return readEntries(database, u"SELECT * from tbl_waitlist WHERE w_datetime='"_s + slot.dateTimeText() +
                                     u"' AND w_field="_s + QString::number(slot.field) + u" ORDER BY w_id"_s);
}

std::vector<QString> wantedHours(WorkingHours hours)
{
    std::vector<QString> texts;
    for (const int hour : hoursOfDay(hours))
        texts.push_back(formatTwoDigits(hour) + u":00:00"_s);
    return texts;
}

void addWaitingEntry(Database &database, const QString &staff, const QString &day, const QString &time, int field,
                     const Booker &booker)
{
    QString tel = booker.telephone;
    QString org = booker.organisation;
    QString name = booker.name;
    QString staffName = staff;
    DbConnection connection(database);
    connection.execute(u"INSERT INTO tbl_waitlist SET w_datetime='"_s + day + u' ' + time + u"', w_bookertel='"_s +
                       EscapeQuotes(tel) + u"', w_bookerorg='"_s + EscapeQuotes(org) + u"', w_bookername='"_s +
                       EscapeQuotes(name) + u"', w_field="_s + QString::number(field) + u", w_specialrate='"_s +
                       booker.rateType + u"', w_staffname='"_s + EscapeQuotes(staffName) + u"'"_s);
}

bool deleteWaitingEntry(Station &station, const QString &id)
{
    if (!station.prompts.confirm(u"Confirm delete?"_s, u"Important"_s) ||
        !station.prompts.verifyStaff(u"Delete an entry of the waiting list"_s))
        return false;
    DbConnection connection(station.database);
    connection.execute(u"DELETE FROM tbl_waitlist where w_id='"_s + id + u"'"_s);
    return true;
}
