#include "reportserver/BookingPage.h"

#include "app/RateType.h"
#include "reportserver/BookingFigures.h"
#include "reportserver/Html.h"
#include "reportserver/Money.h"
#include "reportserver/OccupancyPicture.h"
#include "reportserver/TillParts.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// More lines than this tell nobody anything.
constexpr std::size_t mostLines = 500;

QString percentText(int part, int whole)
{
    return QString::number(whole == 0 ? 0 : std::lround(100.0 * part / whole)) + u" %"_s;
}

bool isPlayed(const PageWork &work, const ReportedHour &hour)
{
    return hoursUntil(work.now, hour.day, hourRangeText(hour.hour).left(5), work.settings.hours()) < 0;
}

int openHours(const PageWork &work)
{
    return int(hoursOfDay(work.settings.hours()).size()) * work.period.days();
}

QString tiles(const PageWork &work, const BookingFigures &figures, const Takings &takings)
{
    const BookedSum sum = figures.sum();
    const int open = openHours(work) * work.settings.fields();
    int taken = 0;
    for (const auto &[field, count] : figures.takenByField())
        taken += count;
    int owed = 0;
    for (const ReportedHour &hour : figures.hours)
        owed += !hour.isPaid() && isPlayed(work, hour) ? 1 : 0;
    return Html::tiles({{u"Hours booked"_s, QString::number(sum.hours),
                         sum.extraMinutes > 0 ? u"and %1 extra minutes"_s.arg(sum.extraMinutes) : QString()},
                        {u"Occupancy"_s, percentText(taken, open),
                         u"%1 of %2 hours, with shared ground"_s.arg(QString::number(taken), QString::number(open))},
                        {u"Hours paid"_s, QString::number(sum.paidHours), u"worth "_s + centsText(sum.paid)},
                        {u"Hours not paid"_s, QString::number(sum.unpaidHours()), u"%1 of them are played"_s.arg(owed)},
                        {u"Taken at the counters"_s, centsText(takings.all()),
                         u"hours %1, goods %2"_s.arg(centsText(takings.hours), centsText(takings.goods))},
                        {u"Waiting list"_s, QString::number(figures.allWaiting()), u"entries"_s}});
}

QString fields(const PageWork &work, const BookingFigures &figures)
{
    Html::Table table{{{u"Field"_s},
                       {u"Booked"_s, true},
                       {u"Occupancy"_s, true},
                       {u"Paid"_s, true},
                       {u"Not paid"_s, true},
                       {u"Amount paid"_s, true},
                       {u"Waiting"_s, true}}};
    table.isWide = true;
    std::map<int, BookedSum> sums = figures.sumByField();
    for (int field = 0; field < work.settings.fields(); ++field)
        sums[field];
    const auto countOf = [](const std::map<int, int> &counts, int field) {
        const auto found = counts.find(field);
        return found == counts.end() ? 0 : found->second;
    };
    const std::map<int, int> taken = figures.takenByField();
    for (const auto &[field, sum] : sums)
        table.rows.push_back({work.settings.fieldName(field), QString::number(sum.hours),
                              percentText(countOf(taken, field), openHours(work)), QString::number(sum.paidHours),
                              QString::number(sum.unpaidHours()), centsText(sum.paid),
                              QString::number(countOf(figures.waiting, field))});
    return Html::heading(u"Fields"_s) + Html::table(table);
}

QString unpaid(const PageWork &work, const BookingFigures &figures)
{
    const bool isDay = work.period.kind == ReportPeriod::Kind::Day;
    Html::Table table{{{u"Hour"_s}, {u"Field"_s}, {u"Booker"_s}, {u"Telephone"_s}, {u"Rate"_s}, {u"Played"_s}}};
    table.isWide = true;
    std::size_t count = 0;
    for (const ReportedHour &hour : figures.hours) {
        if (hour.isPaid() || ++count > mostLines)
            continue;
        const QString when = hourRangeText(hour.hour);
        table.rows.push_back({isDay ? when : hour.day + u", "_s + when.left(5), work.settings.fieldName(hour.field),
                              hour.booker, hour.telephone, RateType::inWords(hour.rateType),
                              isPlayed(work, hour) ? u"yes"_s : u"to come"_s});
    }
    table.whenEmpty = u"Every booked hour is paid."_s;
    QString html = Html::heading(u"Hours not paid"_s) + Html::table(table);
    if (count > mostLines)
        html += Html::paragraph(u"And %1 more; look at a shorter time to see them."_s.arg(count - mostLines));
    return html;
}

QString bookingsOf(const BookingFigures &figures, int field)
{
    Html::Table table{{{u"Hour"_s},
                       {u"Booker"_s},
                       {u"Organisation"_s},
                       {u"Telephone"_s},
                       {u"Rate"_s},
                       {u"Extra time"_s},
                       {u"Paid"_s, true}}};
    table.isWide = true;
    for (const ReportedHour &hour : figures.hours)
        if (hour.field == field)
            table.rows.push_back({hourRangeText(hour.hour), hour.booker, hour.organisation, hour.telephone,
                                  RateType::inWords(hour.rateType),
                                  hour.extraMinutes > 0 ? u"%1 minutes"_s.arg(hour.extraMinutes) : QString(),
                                  hour.isPaid() ? centsText(hour.paid) : u"not paid"_s});
    return Html::table(table);
}

QString bookings(const PageWork &work, const BookingFigures &figures)
{
    QString html = Html::heading(u"Bookings"_s);
    const auto sums = figures.sumByField();
    for (const auto &[field, sum] : sums)
        html += Html::subheading(work.settings.fieldName(field)) + bookingsOf(figures, field);
    return sums.empty() ? html + Html::paragraph(u"Nothing is booked."_s) : html;
}

} // namespace

QByteArray bookingPage(const PageWork &work)
{
    const WorkingHours hours = work.settings.hours();
    const BookingFigures figures = readBookings(work.connection, work.period, hours);
    TillParts::ByCounter till;
    std::map<int, std::vector<ShiftAccount>> shifts;
    for (const int counter : work.counters) {
        till[counter] = readTill(work.connection, counter, work.period, hours);
        shifts[counter] = readShifts(work.connection, counter, work.period, hours);
    }
    QString content =
        tiles(work, figures, TillParts::sumOf(till)) +
        Html::sideBySide(Html::heading(u"Occupancy"_s) + occupancyPicture(figures, work.period, work.settings),
                         fields(work, figures)) +
        TillParts::takings(work, till) + unpaid(work, figures) + TillParts::shifts(shifts) + TillParts::goods(till);
    if (work.period.kind == ReportPeriod::Kind::Day)
        content += bookings(work, figures);
    return framed(work, u"Bookings: "_s + work.period.inWords(), navigation(work, 0), content);
}
