#pragma once

#include "app/Station.h"

#include <vector>

/// The only caption that blinks.
inline const QString alertCaption = QStringLiteral("Alert");

/// Sets each field's caption to "Alert" where the players of the present hour must make way for others, or for nobody,
/// at the coming one, and empties it elsewhere. Field by field: on an error (throws DbError) the captions set so far
/// stand. There is one caption for each field, from field 0. Reads tbl_booking.
void RefreshAlert(Station &station, std::vector<QString> &captions);

/// When alerts are raised, cleared and seen. To be asked once a second.
class AlertClock
{
public:
    struct Tick
    {
        bool refresh = false; ///< minute 55: raise the alerts, then redraw the grid
        bool clear = false;   ///< minute 2: empty all captions
        bool lit = false;     ///< even second: labels that say "Alert" are seen
    };
    Tick tick(QTime now);
    /// The alerts could not be raised: the next tick of minute 55 asks again.
    void failed() { m_failed = true; }

private:
    bool m_doneThisHour = false;
    bool m_failed = false;
};
