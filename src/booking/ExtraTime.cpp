#include "booking/ExtraTime.h"

#include "app/SqlText.h"
#include "booking/SlotOperation.h"

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
    return sql(u" WHERE b_datetime='%1'AND b_field=%2"_s, slot.dateTimeText(), slot.field);
}

QString reasonNotToAdd(const Station &station, const DaySelection &selection, qint16 minutes)
{
    const DayRow &row = selection.row(selection.current);
    if (row.isFree())
        return u"There is no booked slot to add "_s + QString::number(minutes) + u" minutes"_s;
    if (row.isGroundTaken)
        return groundTakenText();
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

/// Changes the extra minutes of the current slot while its booker is still the one in the grid. Says what stood against
/// it; empty when it is done, or when the slot has vanished, which is told by the grid alone.
class ExtraTimeChange : private SlotOperation
{
public:
    ExtraTimeChange(Station &station, const DaySelection &selection, const QString &staff)
        : SlotOperation(station, u"The extra time of"_s, selection.slotOf(selection.row(selection.current)), staff,
                        true),
          m_row(selection.row(selection.current))
    {
    }

    QString add(qint16 minutes)
    {
        return run([&] { return tryToAdd(minutes); });
    }

    QString clear()
    {
        return run([this] { return tryToClear(); });
    }

private:
    struct Result
    {
        bool isDone = false;
        QString refusal = {};
    };

    QString run(const std::function<Result()> &change)
    {
        Result result;
        m_operation.run([&] {
            result = change();
            return result.isDone;
        });
        return result.refusal;
    }

    /// Why the slot is not what the grid shows any more; empty also for one that has vanished.
    [[nodiscard]] QString changed(const std::optional<SlotHolder> &holder) const
    {
        if (!holder)
            return {};
        return holder->name == m_row.booker ? QString() : changedMeanwhile(holder->name);
    }

    Result tryToAdd(qint16 minutes)
    {
        const auto holder = holdSlot(m_operation, m_slot);
        if (const QString refusal = changed(holder); !refusal.isEmpty())
            return {false, refusal};
        if (holder && holder->isPaid)
            return {false, u"The slot already paid"_s};
        if (m_operation.query(u"SELECT * FROM tbl_booking"_s + condition(m_slot)).size() == 0)
            return {};
        if (isNextHourSold(m_operation, m_station, m_slot))
            return {false, u"The field already being booked"_s};
        m_operation.execute(sql(u"UPDATE tbl_booking SET b_extratime=%1%2"_s, int(minutes), condition(m_slot)));
        remark(m_slot, u" for player adding "_s + QString::number(minutes) + u" minutes more "_s, u"extra time"_s);
        return {true};
    }

    Result tryToClear()
    {
        const auto holder = holdSlot(m_operation, m_slot);
        if (const QString refusal = changed(holder); !refusal.isEmpty())
            return {false, refusal};
        if (!holder)
            return {};
        if (holder->isPaid)
            return {false, u"You cannot delete paid slot"_s};
        m_operation.execute(u"UPDATE tbl_booking SET b_extratime=0"_s + condition(m_slot));
        remark(m_slot, u" do not want extratime."_s, u"delete extra time"_s);
        return {true};
    }

    const DayRow &m_row;
};

bool tell(Prompts &prompts, const QString &refusal)
{
    if (!refusal.isEmpty())
        prompts.refuse(refusal);
    return refusal.isEmpty();
}

} // namespace

bool AddExtraTime(Station &station, const DaySelection &selection, qint16 minutes)
{
    const auto verification = verifyUnless(station, reasonNotToAdd(station, selection, minutes),
                                           u"Add "_s + QString::number(minutes) + u" minutes to"_s, selection);
    return verification &&
           tell(station.prompts, ExtraTimeChange(station, selection, verification->staffName).add(minutes));
}

bool clearExtraTime(Station &station, const DaySelection &selection)
{
    const auto verification =
        verifyUnless(station, reasonNotToClear(station, selection), u"Remove the extra time of"_s, selection);
    return verification && tell(station.prompts, ExtraTimeChange(station, selection, verification->staffName).clear());
}
