#include "booking/ExtraTime.h"

#include "booking/RemarkLog.h"
#include "booking/SlotWords.h"

using namespace Qt::StringLiterals;

namespace {

qint64 hoursUntilRow(const Station &station, const DaySelection &selection, const DayRow &row)
{
    return hoursUntil(station.now(), selection.day, row.hourText(), station.hours());
}

const DayRow *rowAfter(const DaySelection &selection)
{
    const auto next = std::size_t(selection.current) + 1;
    return next < selection.rows.size() ? &selection.rows[next] : nullptr;
}

// No blank stands between the quote and AND.
QString condition(const SlotKey &slot)
{
    return u" WHERE b_datetime='"_s + slot.dateTimeText() + u"'AND b_field="_s + QString::number(slot.field);
}

QString reasonNotToAdd(const Station &station, const DaySelection &selection, qint16 minutes)
{
    const DayRow &row = selection.row(selection.current);
    if (row.isFree())
        return u"There is no booked slot to add "_s + QString::number(minutes) + u" minutes"_s;
    if (row.isPaid())
        return u"The slot already paid"_s;
    const DayRow *next = rowAfter(selection);
    if (!next)
        return u"There is no more slot to add extra time!"_s;
    if (hoursUntilRow(station, selection, *next) < 0)
        return u"You cannot book previous entry!"_s;
    return next->isFree() ? QString() : u"The field already being booked"_s;
}

QString reasonNotToClear(const Station &station, const DaySelection &selection)
{
    const DayRow &row = selection.row(selection.current);
    if (hoursUntilRow(station, selection, row) <= 0)
        return u"You cannot delete elapsed extra time"_s;
    if (row.isPaid())
        return u"You cannot delete paid slot"_s;
    if (row.isFree())
        return u"You cannot delete empty slot"_s;
    if (row.isExtraTime())
        return u"The slot is an extra time of previous slot, use the previous slot to clear the additions"_s;
    const DayRow *next = rowAfter(selection);
    return next && next->isExtraTime() ? QString() : u"There is no extra time associated with the slot"_s;
}

std::optional<Verification> verifyUnless(Station &station, const QString &refusal, const QString &task,
                                         const DaySelection &selection)
{
    if (refusal.isEmpty())
        return station.prompts.verifyStaff(
            taskInWords(task, station.settings, selection.slotOf(selection.row(selection.current))));
    station.prompts.refuse(refusal);
    return std::nullopt;
}

} // namespace

bool AddExtraTime(Station &station, const DaySelection &selection, qint16 minutes)
{
    const auto verification = verifyUnless(station, reasonNotToAdd(station, selection, minutes),
                                           u"Add "_s + QString::number(minutes) + u" minutes to"_s, selection);
    if (!verification)
        return false;
    const SlotKey slot = selection.slotOf(selection.row(selection.current));
    const QString number = QString::number(minutes);
    DbConnection connection(station.database);
    // A slot that has vanished since the grid was drawn gets nothing, without a message.
    if (connection.query(u"SELECT * FROM tbl_booking"_s + condition(slot)).size() > 0) {
        connection.execute(u"UPDATE tbl_booking SET b_extratime="_s + number + condition(slot));
        writeRemark(
            station, connection,
            {slot, u" for player adding "_s + number + u" minutes more "_s, u"extra time"_s, verification->staffName});
    }
    return true;
}

bool clearExtraTime(Station &station, const DaySelection &selection)
{
    const auto verification =
        verifyUnless(station, reasonNotToClear(station, selection), u"Remove the extra time of"_s, selection);
    if (!verification)
        return false;
    const SlotKey slot = selection.slotOf(selection.row(selection.current));
    DbConnection connection(station.database);
    connection.execute(u"UPDATE tbl_booking SET b_extratime=0"_s + condition(slot));
    writeRemark(station, connection,
                {slot, u" do not want extratime."_s, u"delete extra time"_s, verification->staffName});
    return true;
}
