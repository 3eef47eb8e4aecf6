#pragma once

#include "app/DayRow.h"
#include "app/Station.h"
#include "records/Booker.h"

#include <optional>

/// One hour of one field for one booker.
struct BookingRequest
{
    SlotKey slot;
    Booker booker;
    /// w_id of the waiting-list entry that is taken off the list with the booking.
    std::optional<QString> fromWaitingList = {};
};

enum class BookingOutcome { Booked, PreviousEntry, AlreadyBooked, EntryGone };

/// The refusal's text; empty for Booked.
QString refusalText(BookingOutcome outcome);

/// Books one slot: tbl_booking with the marker rows of shared fields, their remarks (tbl_remark), and the waiting-list
/// entry deleted (tbl_waitlist); whole or not at all. Ground that another booking or its extra time takes is
/// AlreadyBooked, an entry that has left the list EntryGone. Throws DbError and NotDone.
BookingOutcome doBooking(Station &station, const QString &staff, const BookingRequest &request);

/// What btn_Book does before the booker is asked for: the first selected row that is past or taken refuses everything;
/// then the staff member is verified. Nothing when either failed.
std::optional<Verification> startBooking(Station &station, const DaySelection &selection);

/// Books every selected row for one booker; a refused row shows its message and the others go on. Adds each row that
/// was booked or refused to `handled`. Throws DbError and NotDone.
void bookSelection(Station &station, const QString &staff, const DaySelection &selection, const Booker &booker,
                   std::vector<int> *handled = nullptr);
