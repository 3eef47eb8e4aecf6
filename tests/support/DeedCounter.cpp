#include "support/DeedCounter.h"

#include "app/RateType.h"
#include "booking/Cancelling.h"
#include "booking/ExtraTime.h"
#include "booking/Ground.h"
#include "booking/Pasting.h"
#include "booking/Rates.h"
#include "counter/Settlement.h"
#include "support/DrawnRows.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const QString day = u"2026-11-14"_s;

const QString reason = u"rain, it's said"_s;

Booker named(const QString &name)
{
    return {name, u"it's FC"_s, u"5'5"_s, RateType::student};
}

QDateTime standingClock()
{
    return {QDate(2026, 11, 14), QTime(14, 59, 59)};
}

QString orDone(const QString &refusal)
{
    return refusal.isEmpty() ? u"done"_s : refusal;
}

} // namespace

DeedCounter::DeedCounter(const QString &connectionString, int number, const QStringList &pairs)
    : station(testSettings(connectionString, number, pairs), *this, &standingClock)
{
    station.timeText = u"14 Nov 02:59:59 PM"_s;
}

std::optional<Verification> DeedCounter::verifyStaff(const QString & /*what*/)
{
    return Verification{u"anna"_s, AccessLevel::Admin};
}

QString DeedCounter::act(const QString &deed)
{
    try {
        return attempt(deed.split(u' '));
    } catch (const std::exception &error) {
        return u"failed: "_s + QString::fromUtf8(error.what());
    }
}

void DeedCounter::actAll(const QString &deeds)
{
    for (const QString &deed : listOf(deeds))
        QCOMPARE(act(deed), u"done"_s);
}

QString DeedCounter::attempt(const QStringList &words)
{
    const QString &what = words[0];
    if (what == u"cut") {
        DbRows entries = DbConnection(station.database).query(u"SELECT w_id FROM tbl_waitlist ORDER BY w_id"_s);
        return entries.next() && cutWaitingEntry(station, m_clipboard, entries.text("w_id")) ? u"done"_s : u"nothing"_s;
    }
    const SlotKey slot{day, words.at(1), words.at(2).toInt()};
    if (what == u"paste")
        return paste(slot);
    const QString name = words.mid(3).join(u' ');
    if (what == u"wait") {
        addWaitingEntry(station, u"anna"_s, day, slot.hourText + u":00"_s, slot.field, named(name));
        return u"done"_s;
    }
    if (what == u"book")
        return orDone(refusalText(doBooking(station, u"anna"_s, {slot, named(name)})));
    if (what == u"clear")
        return orDone(doCancel(station, u"anna"_s, {slot, name, reason}).refusalText());
    if (what == u"sell")
        return sell({slot, name, named(name).rateType});
    const QString row = u'>' + slot.hourText + u' ' + name;
    const DaySelection grid = drawnDay(day, slot.field, {row});
    bool isDone = false;
    if (what == u"extra")
        isDone = AddExtraTime(station, grid, 30);
    else if (what == u"noextra")
        isDone = clearExtraTime(
            station, drawnDay(day, slot.field, {row, hourAfter(slot.hourText, station.hours()) + u" +30"_s}));
    else if (what == u"rate")
        isDone = changeRateType(station, grid, u"member"_s);
    else
        throw std::invalid_argument("No deed: " + words.join(u' ').toStdString());
    return isDone ? u"done"_s : m_told.value(m_told.size() - 1, u"nothing"_s);
}

QString DeedCounter::paste(const SlotKey &slot)
{
    const ClipboardSource source = m_clipboard.source();
    const auto booker = clipboardBooker(station, m_clipboard, source);
    return booker ? orDone(refusalText(pasteOn(station, m_clipboard, u"anna"_s, slot, *booker, source))) : u"nothing"_s;
}

QString DeedCounter::sell(const BookedHour &hour)
{
    PaymentList list;
    list.addHour(hour, {{}, 0, 40, 1, 40});
    list.addItem(u"Cola"_s, u"2.50"_s, u"2"_s);
    const Settlement settlement = settle(station, list);
    return orDone(settlement.refused.empty() ? QString() : settlement.refused.front().why);
}
