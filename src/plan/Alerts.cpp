#include "plan/Alerts.h"

#include "app/DayRow.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int alertMinute = 55;
constexpr int clearMinute = 2;
constexpr qint64 hour = 3600; // seconds

QString bookerOf(DbConnection &connection, const StoredHour &hourOfDay, int field)
{
    DbRows rows = connection.query(u"SELECT * from tbl_booking where b_datetime=\""_s + hourOfDay.dateTimeText() +
                                   u"\" AND b_field="_s + QString::number(field) + u';');
    QString booker;
    while (rows.next())
        if (const QString name = rows.text("b_bookername"); takesPlaceOf(booker, name))
            booker = name;
    return booker;
}

} // namespace

void RefreshAlert(Station &station, std::vector<QString> &captions)
{
    captions.resize(std::size_t(qMax(0, station.settings.MaxFieldIndex + 1)));
    DbConnection connection(station.database);
    // The clock on the wall: a day of 23 or 25 hours plays no part.
    const QDateTime now(station.now().date(), station.now().time(), Qt::UTC);
    const StoredHour coming = storedHour(now.addSecs(hour), station.hours());
    const StoredHour present = storedHour(now, station.hours());
    for (int field = 0; field <= station.settings.MaxFieldIndex; ++field) {
        const QString next = bookerOf(connection, coming, field);
        const QString playing = bookerOf(connection, present, field);
        captions[std::size_t(field)] = playing.isEmpty() || playing == next ? QString() : alertCaption;
    }
}

AlertClock::Tick AlertClock::tick(QTime now)
{
    const bool first = !m_doneThisHour;
    const bool again = std::exchange(m_failed, false) && now.minute() == alertMinute && !first;
    const Tick due{now.minute() == alertMinute && (first || again), now.minute() == clearMinute && first,
                   now.second() % 2 == 0};
    m_doneThisHour = now.minute() == alertMinute || now.minute() == clearMinute;
    return due;
}
