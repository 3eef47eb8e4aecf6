#pragma once

#include "app/DayRow.h"
#include "app/Station.h"
#include "booking/BookingClipboard.h"
#include "support/PrivateServer.h"
#include "support/ScriptedPrompts.h"

#include <QStringList>

/// The fields of the tests' centre that share their ground.
inline const QStringList sharedPairs{QStringLiteral("0&1"), QStringLiteral("0&2"), QStringLiteral("3&4"),
                                     QStringLiteral("3&5")};

struct ScriptedPerson
{
    ScriptedPrompts person;
};

/// A counter of the tests' centre: nine fields, open from 8 to 2, two full pitches 0 and 3 whose halves are 1 and 2,
/// and 4 and 5. Its clock stands still at 14:59:59 on 14 November 2026, a Saturday, until it is set.
/// The person at it says what the script says.
struct TestStation : ScriptedPerson, Station
{
    explicit TestStation(const PrivateServer &server, const QStringList &script = {}, int counter = 1);

    /// "yyyy-mm-dd hh:mm:ss"; sets the clock that the main window shows, too.
    void setNow(const QString &moment);

    BookingClipboard clipboard; ///< what its staff hold for pasting

private:
    QDateTime m_now;
};

AppSettings testSettings(const QString &connectionString, int counter = 1, const QStringList &pairs = sharedPairs);

/// A day drawn as lines of text, with every hour that has no line free:
///     "09:00 Team A"    "10:00 Team A paid 50.00"    "11:00 +30"    "12:00 Team B tel 555"
/// "+30" is the extra time of the hour before. A ">" before the hour selects the row; the first one selected is the
/// current one.
DaySelection drawnDay(const QString &day, int field, const QStringList &lines);
