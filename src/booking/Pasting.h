#pragma once

#include "booking/Booking.h"
#include "booking/BookingClipboard.h"

/// The booker on the clipboard as the database holds it now; nothing when there is none, when the row is not the one
/// that this counter cut, or when the cut entry has left the waiting list since: staff are told then. Throws DbError.
std::optional<Booker> clipboardBooker(Station &station, const BookingClipboard &clipboard, ClipboardSource source);

/// Books the clipboard's booker on one slot. From the waiting list the first booking takes the entry off it and clears
/// the clipboard's flag; the bookings after it are ordinary ones. Throws DbError and NotDone.
BookingOutcome pasteOn(Station &station, BookingClipboard &clipboard, const QString &staff, const SlotKey &slot,
                       const Booker &booker, ClipboardSource source);

/// mnu_Paste: verifies the staff member and books the clipboard's booker on every selected row; a row that is refused
/// shows its message and the others go on. False when nothing was tried. Throws DbError
/// and NotDone.
bool pasteSelection(Station &station, BookingClipboard &clipboard, const DaySelection &selection);
