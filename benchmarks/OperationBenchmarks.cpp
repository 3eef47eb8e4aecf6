#include "Benchmark.h"

#include "app/SqlText.h"
#include "booking/BlockBooking.h"
#include "booking/Booking.h"
#include "booking/Cancelling.h"
#include "plan/Alerts.h"
#include "schedule/DaySchedule.h"

#include <QScopeGuard>
#include <QTextStream>

using namespace Qt::StringLiterals;

void Benchmark::compareOperations()
{
    const QString day = sqlDate(m_day);
    const Booker booker{u"Harbour Team"_s, u"Harbour School"_s, u"0612345678"_s, {}};
    const QString hour = u"10:00"_s;
    const SlotKey slot{day, hour, benchHalf};
    const QByteArrayList booking = compare({u"doBooking"_s, 201, [&] {
                                                const auto outcome = doBooking(m_station, benchStaff, {slot, booker});
                                                require(outcome == BookingOutcome::Booked, "doBooking refused");
                                            }});
    compare({u"doCancel"_s, 201,
             [&] {
                 const auto outcome = doCancel(m_station, benchStaff, {slot, booker.name, u"ill"_s}).outcome;
                 require(outcome == CancelOutcome::Cancelled, "doCancel refused");
             },
             booking});
    BookingClipboard clipboard;

    m_bare.sendAll(booking);
    DaySelection selection{day, benchHalf, readDay(m_station, day, benchHalf).rows, {2}, 2};
    require(copySlot(m_station, clipboard, selection), "The slot could not be copied");
    takeAwayBookings();
    selection.selected = {2, 3, 4};
    compare({u"block booking of 8 blockWeeks x 3 hours"_s, 41, [&] {
                 std::vector<BlockBookingHour> results;
                 bookBlock(
                     m_station, clipboard, selection, blockWeeks, [](int) {}, results);
                 require(results.size() == std::size_t(blockWeeks) * 3, "The block is not whole");
             }});

    m_settings.MaxFieldIndex = 15;
    Station largeCentre(m_settings, m_prompts, &Benchmark::halfPastTwo);
    std::vector<QString> captions;
    compare({u"RefreshAlert for 16 fields"_s, 201, [&] { RefreshAlert(largeCentre, captions); }});
}

void Benchmark::compareFlushed()
{
    constexpr int rounds = 101;
    const QByteArray setting = "SET GLOBAL innodb_flush_log_at_trx_commit=";
    const QByteArray before = m_root.column("SELECT @@GLOBAL.innodb_flush_log_at_trx_commit").value(0);
    m_root.send(setting + '1');
    const auto back = qScopeGuard([&] { m_root.send(setting + before); });
    const auto bookOn = [&](int wanted) {
        return [this, wanted] {
            const Booker booker{u"Harbour Team"_s, u"Harbour School"_s, u"0612345678"_s, {}};
            const auto outcome = doBooking(m_station, benchStaff, {{sqlDate(m_day), u"10:00"_s, wanted}, booker});
            require(outcome == BookingOutcome::Booked, "doBooking refused");
        };
    };
    Comparison plain{u"flushed: doBooking of a court"_s};
    Comparison shared{u"flushed: doBooking of a pitch with two halves"_s};
    const Operation ofCourt{plain.name, rounds, bookOn(plainCourt)};
    const Operation ofPitch{shared.name, rounds, bookOn(sharedPitch)};
    const QByteArrayList courtStatements = firstRound(ofCourt);
    const QByteArrayList pitchStatements = firstRound(ofPitch);
    for (int i = 0; i < rounds; ++i) {
        measure(ofCourt, courtStatements, i, plain);
        measure(ofPitch, pitchStatements, i, shared);
    }
    plain.print();
    shared.print();
    compare(sale(u"flushed: settle 4 hours and 6 goods"_s, 51));
    QTextStream(stdout) << "name\tshared\tplain\tratio" << Qt::endl;
    Comparison{u"flushed: a shared booking against a plain one"_s, 1.3, 0, shared.ours, plain.ours}.print();
}
