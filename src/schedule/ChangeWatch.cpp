#include "schedule/ChangeWatch.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int shortestPause = 2; // seconds
constexpr int longestPause = 30;

// Two operations may end in another order than their remarks were numbered, so the newest number alone is not enough.
QString newestRemarks(Database &database)
{
    DbConnection connection(database);
    DbRows rows = connection.query(u"SELECT MAX(m_id) AS newest, SUM(m_id) AS recent FROM "
                                   "(SELECT m_id FROM tbl_remark ORDER BY m_id DESC LIMIT 20) AS remarks"_s);
    return rows.next() ? rows.text("newest") + u' ' + rows.text("recent") : QString();
}

} // namespace

bool ChangeWatch::hasMoved(Station &station)
{
    const QDateTime now = station.now();
    // A clock that was set back must not stop the looks.
    if (m_next.isValid() && now < m_next && now.secsTo(m_next) <= longestPause)
        return false;
    try {
        const QuietReads quiet(station.database);
        m_newest = newestRemarks(station.database);
        m_pause = shortestPause;
        m_next = now.addSecs(m_pause);
        note(station);
        return m_shown != m_newest;
    } catch (const DatabaseBusy &) {
        return false;
    } catch (const DbError &) {
        m_pause = std::clamp(m_pause * 2, shortestPause, longestPause);
        m_next = station.now().addSecs(m_pause);
        note(station);
        return false;
    }
}

void ChangeWatch::note(const Station &station)
{
    if (!station.database.isReachable()) {
        if (!m_lostSince)
            m_lostSince = station.now();
    } else if (m_lostSince) {
        // What was shown before it was lost may be old, or was never read.
        m_lostSince.reset();
        m_shown.reset();
        m_next = station.now().addSecs(shortestPause);
    }
}
