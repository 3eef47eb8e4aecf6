#pragma once

#include "booking/Pasting.h"

#include <functional>

/// One hour of a block: where it was tried and what became of it.
struct BlockBookingHour
{
    QString date; ///< "yyyy-mm-dd" of the business day
    QString hour; ///< "hh:mm"
    BookingOutcome outcome = BookingOutcome::Booked;
};

/// Books the clipboard's booker on the selected hours of one day and adds what became of them to the results. The
/// source is the one that the block began with: its first booking may take the entry off the waiting list. False when
/// the clipboard has no booker, or its entry has left the waiting list. Throws DbError and NotDone; the results tell
/// how far it came.
bool Block_Booking(Station &station, BookingClipboard &clipboard, ClipboardSource source, const QString &staff,
                   const QString &date, const DaySelection &selection, std::vector<BlockBookingHour> &results);

/// mnu_BlockBook1, mnu_BlockBook2: verifies the staff member once and books the displayed day and the same weekday of
/// the following weeks, `weeks` in all. Progress is told after each week; results as Block_Booking.
void bookBlock(Station &station, BookingClipboard &clipboard, const DaySelection &selection, int weeks,
               const std::function<void(int week)> &progress, std::vector<BlockBookingHour> &results);
