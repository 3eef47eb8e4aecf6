#include "booking/Rates.h"

#include "app/Formats.h"
#include "app/Operation.h"
#include "app/SqlText.h"
#include "booking/Ground.h"
#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

double CalcFieldRate(Database &database, qint16 field, qint16 hour, const QString &dayName, const QString &rateType)
{
    DbConnection connection(database);
    DbRows rows = connection.query(sql(u"SELECT * from tbl_rate where r_day LIKE \"%1\" AND r_field=%2 AND r_special = "
                                       "\"%3\" AND r_timestart<=%4 and r_timestop>=%4"_s,
                                       dayName, int(field), rateType, hour == 24 ? 0 : int(hour)));
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
    if (row.isGroundTaken) {
        station.prompts.refuse(groundTakenText());
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
    const QString refusal = SetMembershipStatus(station, verification->staffName, selection, rateType);
    if (!refusal.isEmpty())
        station.prompts.refuse(refusal);
    return refusal.isEmpty();
}

QString SetMembershipStatus(Station &station, const QString &staff, const DaySelection &selection,
                            const QString &rateType)
{
    const DayRow &row = selection.row(selection.current);
    const SlotKey slot = selection.slotOf(row);
    QString refusal;
    Operation operation(station, u"The rate of "_s + slotInWords(station, slot));
    operation.run([&] {
        const auto holder = holdSlot(operation, slot);
        if (!holder)
            refusal = changedMeanwhile(u"it is free now"_s);
        else if (holder->name != row.booker)
            refusal = changedMeanwhile(holder->name);
        else
            refusal = holder->isPaid ? u"The slot already paid"_s : QString();
        if (!refusal.isEmpty())
            return false;
        operation.execute(sql(u"UPDATE tbl_booking SET b_specialrate='%1' where b_datetime='%2' AND b_field=%3"_s,
                              rateType, slot.dateTimeText(), slot.field));
        writeRemark(
            station, operation,
            {slot, sql(u" set %1 rate for %2 %3"_s, rateType, row.booker, row.hourText()), u"change rate"_s, staff});
        return true;
    });
    return refusal;
}
