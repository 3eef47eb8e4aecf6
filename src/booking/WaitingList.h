#pragma once

#include "app/Station.h"
#include "records/Booker.h"

#include <vector>

/// One row of tbl_waitlist: who wants which hour.
struct WaitingEntry
{
    QString id;
    Booker booker;
    QString dateTimeText; ///< the wanted slot, "yyyy-mm-dd hh:mm:ss", midnight as 24
    int field = 0;
    QString staffName; ///< who took the entry

    bool operator==(const WaitingEntry &) const = default;
};

/// An entry as a row of tbl_waitlist or tbl_waitlist_clipboard holds it.
WaitingEntry waitingEntryOf(const DbRows &row);

/// Everybody who waits for an hour of this day and field, in the order of the database. Throws DbError.
std::vector<WaitingEntry> readWaitingList(Database &database, const QString &day, int field);

/// Everybody who waits for just this slot, longest waiting first. Throws DbError.
std::vector<WaitingEntry> waitingFor(Database &database, const SlotKey &slot);

/// The wanted hours that can be chosen, "hh:mm:ss" in the order of the business day, midnight "24:00:00".
std::vector<QString> wantedHours(WorkingHours hours);

/// Puts a booker on the list for a day "yyyy-mm-dd", a time "hh:mm:ss" and a field. Throws DbError and
/// NotDone.
void addWaitingEntry(Station &station, const QString &staff, const QString &day, const QString &time, int field,
                     const Booker &booker);

/// btn_ClearEntry: asks "Confirm delete?", verifies the staff member and deletes the entry. False when it stays.
/// Throws DbError.
bool deleteWaitingEntry(Station &station, const QString &id);
