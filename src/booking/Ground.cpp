#include "booking/Ground.h"

#include "app/Formats.h"
#include "app/SqlText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isMarker(const QString &booker)
{
    return booker == BookerMark::sharedBooking || booker == BookerMark::partiallyShared;
}

QString neighbour(const QString &hourText, WorkingHours hours, int step)
{
    const std::vector<int> day = hoursOfDay(hours);
    const auto here = std::find(day.cbegin(), day.cend(), hourText.left(2).toInt());
    if (here == day.cend())
        return {};
    const auto index = here - day.cbegin() + step;
    if (index < 0 || index >= std::ssize(day))
        return {};
    return formatTwoDigits(day[std::size_t(index)]) + u":00"_s;
}

QString numbers(const std::vector<int> &fields)
{
    QStringList texts;
    for (const int field : fields)
        texts << QString::number(field);
    return texts.join(u", "_s);
}

/// The rows of some fields at one hour.
DbRows rowsAt(Operation &operation, const SlotKey &hour, const std::vector<int> &fields, GroundLook look)
{
    return operation.query(sql(u"SELECT b_field, b_bookername, b_extratime FROM tbl_booking WHERE b_datetime='%1' "
                               "AND b_field IN (%2)%3"_s,
                               hour.dateTimeText(), numbers(fields),
                               look == GroundLook::Locking ? u" FOR UPDATE"_s : QString()));
}

} // namespace

QStringList groundLocks(const Station &station, const SlotKey &slot, bool andNextHour)
{
    const int ground = station.shared.ground(slot.field);
    if (ground < 0)
        return {};
    const auto name = [&](const QString &hour) { return sql(u"posdb ground %1 %2 %3"_s, ground, slot.day, hour); };
    QStringList locks{name(slot.hourText)};
    if (const QString next = hourAfter(slot.hourText, station.hours()); andNextHour && !next.isEmpty())
        locks << name(next);
    return locks;
}

QString hourBefore(const QString &hourText, WorkingHours hours)
{
    return neighbour(hourText, hours, -1);
}

QString hourAfter(const QString &hourText, WorkingHours hours)
{
    return neighbour(hourText, hours, 1);
}

bool isGroundTaken(Operation &operation, const Station &station, const SlotKey &slot, GroundLook look)
{
    const std::vector<int> others = station.shared.onSameGround(slot.field);
    if (!others.empty()) {
        const int parent = station.shared.parent(slot.field);
        DbRows rows = rowsAt(operation, slot, others, look);
        while (rows.next())
            if (rows.number("b_field") != parent && !isMarker(rows.text("b_bookername")))
                return true;
    }
    const QString before = hourBefore(slot.hourText, station.hours());
    if (before.isEmpty())
        return false;
    std::vector<int> ground = others;
    ground.push_back(slot.field);
    DbRows rows = rowsAt(operation, {slot.day, before, slot.field}, ground, look);
    while (rows.next())
        if (rows.number("b_extratime") > 0)
            return true;
    return false;
}

bool isNextHourSold(Operation &operation, const Station &station, const SlotKey &slot)
{
    const QString after = hourAfter(slot.hourText, station.hours());
    if (after.isEmpty())
        return false;
    std::vector<int> ground = station.shared.onSameGround(slot.field);
    ground.push_back(slot.field);
    DbRows rows = rowsAt(operation, {slot.day, after, slot.field}, ground, GroundLook::Snapshot);
    while (rows.next())
        if (rows.number("b_field") == slot.field || !isMarker(rows.text("b_bookername")))
            return true;
    return false;
}

std::optional<SlotHolder> holdSlot(Operation &operation, const SlotKey &slot)
{
    DbRows rows = operation.query(sql(u"SELECT b_bookername, b_paid FROM tbl_booking WHERE b_datetime='%1' AND "
                                      "b_field=%2 FOR UPDATE"_s,
                                      slot.dateTimeText(), slot.field));
    std::optional<SlotHolder> holder;
    while (rows.next()) {
        const QString name = rows.text("b_bookername");
        const bool paid = (holder && holder->isPaid) || rows.amount("b_paid") > 0;
        holder = SlotHolder{!holder || takesPlaceOf(holder->name, name) ? name : holder->name, paid};
    }
    return holder;
}

QString groundTakenText()
{
    return u"Extra time on another field takes the ground of this hour. It is changed there."_s;
}

QString changedMeanwhile(const QString &holder)
{
    return u"This hour has changed meanwhile: "_s + holder;
}
