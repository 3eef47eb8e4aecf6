#include "booking/Rates.h"

#include "app/Formats.h"
#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

double CalcFieldRate(Database &database, qint16 field, qint16 hour, const QString &dayName, const QString &rateType)
{
    const QString hourOfDay = QString::number(hour == 24 ? 0 : hour);
    DbConnection connection(database);
    DbRows rows = connection.query(u"SELECT * from tbl_rate where r_day LIKE \""_s + dayName + u"\" AND r_field="_s +
                                   QString::number(field) + u" AND r_special = \""_s + rateType +
                                   u"\" AND r_timestart<="_s + hourOfDay + u" and r_timestop>="_s + hourOfDay);
    return rows.next() ? rows.amount("r_rate") : 0;
}

QString rateDayName(const QString &dayText)
{
    return weekdayName(QDate::fromString(dayText, Qt::ISODate));
}

bool changeRateType(Station &station, const DaySelection &selection, const QString &rateType)
{
    const DayRow &row = selection.row(selection.current);
    if (row.isFree()) {
        station.prompts.refuse(u"You cannot set empty slot"_s);
        return false;
    }
    if (row.isPaid()) {
        station.prompts.refuse(u"The slot already paid"_s);
        return false;
    }
    const auto verification =
        station.prompts.verifyStaff(taskInWords(u"Change the rate of"_s, station.settings, selection.slotOf(row)));
    if (!verification)
        return false;
    if (!verification->isAdmin()) {
        station.prompts.inform(u"Only an administrator can change the rate of a slot."_s);
        return false;
    }
    SetMembershipStatus(station, verification->staffName, selection, rateType);
    return true;
}

void SetMembershipStatus(Station &station, const QString &staff, const DaySelection &selection, const QString &rateType)
{
    const DayRow &row = selection.row(selection.current);
    const SlotKey slot = selection.slotOf(row);
    DbConnection connection(station.database);
    connection.execute(u"UPDATE tbl_booking SET b_specialrate='"_s + rateType + u"' where b_datetime='"_s +
                       slot.dateTimeText() + u"' AND b_field="_s + QString::number(slot.field));
    writeRemark(
        station, connection,
        {slot, u" set "_s + rateType + u" rate for "_s + row.booker + u' ' + row.hourText(), u"change rate"_s, staff});
}
