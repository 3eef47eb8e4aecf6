#include "support/RandomDeeds.h"

using namespace Qt::StringLiterals;

RandomDeeds::RandomDeeds(DeedCounter &counter, quint32 seed, QStringList hours, int fieldCount, bool sells)
    : m_counter(counter),
      m_random(seed),
      m_hours(std::move(hours)),
      m_fieldCount(fieldCount),
      m_sells(sells),
      m_prefix(u's' + QString::number(seed) + u'-')
{
}

QString RandomDeeds::next()
{
    if (std::exchange(m_cuts, false))
        return u"cut"_s;
    const int choice = below(10);
    const QString name = m_prefix + QString::number(++m_count);
    if (choice < 4)
        return u"book"_s + anySlot() + u' ' + name;
    if (choice == 4) {
        m_cuts = true;
        return u"wait"_s + anySlot() + u" w"_s + name;
    }
    if (choice == 5)
        return u"paste"_s + anySlot();
    QStringList deeds{u"clear"_s, u"clear"_s, u"extra"_s, u"noextra"_s, u"rate"_s};
    if (m_sells)
        deeds << u"sell"_s;
    const QString booker = anyBooker();
    return booker.isEmpty() ? QString() : deeds[below(int(deeds.size()))] + u' ' + booker;
}

QString RandomDeeds::anySlot()
{
    return u' ' + m_hours[below(int(m_hours.size()))] + u' ' + QString::number(below(m_fieldCount));
}

// "hour field name" of one who stands now.
QString RandomDeeds::anyBooker()
{
    try {
        DbRows rows = DbConnection(m_counter.station.database)
                          .query(u"SELECT CONCAT(SUBSTRING(b_datetime, 12, 5), ' ', b_field, ' ', b_bookername) AS who "
                                 "FROM tbl_booking WHERE b_exclusive=1 ORDER BY RAND(%1) LIMIT 1"_s.arg(below(1000)));
        return rows.next() ? rows.text("who") : QString();
    } catch (const std::exception &) {
        return {};
    }
}
