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
/// booked. An empty id is refused. False when nothing was taken. Throws DbError.
bool cutWaitingEntry(Station &station, BookingClipboard &clipboard, const QString &id);

/// The booker on the clipboard as the database holds it now; nothing when there is none, when the row is not the one
/// that this counter cut, or when the cut entry has left the waiting list since: staff are told then. Throws DbError.
std::optional<Booker> clipboardBooker(Station &station, const BookingClipboard &clipboard, ClipboardSource source);

/// mnu_Paste: verifies the staff member and books the clipboard's booker on every selected row; a row that is refused
/// shows its message and the others go on. False when nothing was tried. Throws DbError.
bool pasteSelection(Station &station, BookingClipboard &clipboard, const DaySelection &selection);
