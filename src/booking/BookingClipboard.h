#pragma once

#include "app/DayRow.h"
#include "app/Station.h"
#include "booking/WaitingList.h"
#include "records/Booker.h"

#include <optional>

/// Where a paste takes its booker from.
enum class ClipboardSource { Nothing, CopiedSlot, WaitingList };

/// What this counter holds for pasting: a copied slot, and before it a waiting-list entry that was cut. The booker's
/// details stand in the database (tbl_booking_clipboard of the counter, tbl_waitlist_clipboard).
struct BookingClipboard
{
    std::optional<SlotKey> copied = {};
    Booker copiedBooker = {};

    bool fromWaitingList = false; ///< cleared by the booking that takes the entry off the list
    QString waitingListId = {};   ///< w_id of the entry that was cut
    WaitingEntry cut = {};        ///< that entry as this counter cut it

    [[nodiscard]] ClipboardSource source() const
    {
        if (fromWaitingList)
            return ClipboardSource::WaitingList;
        return copied ? ClipboardSource::CopiedSlot : ClipboardSource::Nothing;
    }
};

/// mnu_Copy: copies the current slot's booker to the counter's clipboard table, which is locked for the insert.
/// False when the slot was refused. Throws DbError.
bool copySlot(Station &station, BookingClipboard &clipboard, const DaySelection &selection);

/// mnu_Cut: takes a waiting-list entry (tbl_waitlist) to tbl_waitlist_clipboard; it stays on the list until it is
/// booked. An empty id is refused. False when nothing was taken. Throws DbError and
/// NotDone.
bool cutWaitingEntry(Station &station, BookingClipboard &clipboard, const QString &id);

/// The counter's own clipboard table.
QString clipboardTable(const Station &station);

/// The booker in a row of tbl_booking or of a booking clipboard.
Booker bookerOf(const DbRows &row);
