#pragma once

#include "app/Station.h"

#include <optional>

/// Sees from the newest remarks whether another counter changed a slot. To be asked once a second: it looks every two
/// seconds, and after a look that failed at ever longer intervals, until the database has answered again.
class ChangeWatch
{
public:
    /// True when the remarks are not those that stood when the day was shown last. Quiet: gives up after a second and
    /// throws nothing. Reads tbl_remark.
    bool hasMoved(Station &station);
    /// The same look, whoever reads the day anyway.
    void look(Station &station) { static_cast<void>(hasMoved(station)); }
    /// The day was read again after the look.
    void shown() { m_shown = m_newest; }

    /// Notes whether the database answers; to be asked once a second.
    void note(const Station &station);

    /// Since when the database has not answered; nothing while it does.
    [[nodiscard]] const std::optional<QDateTime> &lostSince() const { return m_lostSince; }

private:
    QString m_newest;
    std::optional<QString> m_shown;
    std::optional<QDateTime> m_lostSince;
    QDateTime m_next;
    int m_pause = 0; ///< seconds
};
