#pragma once

#include "app/DayRow.h"
#include "app/Station.h"
#include "booking/BookingClipboard.h"
#include "records/Booker.h"

/// One hour of one field for one booker. Texts as typed, not yet quoted.
struct BookingRequest
{
    QString date; ///< "yyyy-mm-dd" of the business day
    QString hour; ///< "hh:mm", midnight "24:00"
    QString tel;
    QString org;
    QString name;
    int field = 0;
    QString rateType = {};
    bool fromWaitingList = false;
};

enum class BookingOutcome { Booked, PreviousEntry, AlreadyBooked };

/// The refusal's text; empty for Booked.
QString refusalText(BookingOutcome outcome);

/// Books one slot: tbl_booking with the marker rows of shared fields, and their remarks (tbl_remark). From the waiting
/// list the entry that the clipboard names is deleted (tbl_waitlist) and the clipboard's flag cleared. A slot that
/// another counter took between the look and the insert is AlreadyBooked. Throws DbError; what was written stays.
BookingOutcome doBooking(Station &station, BookingClipboard &clipboard, const QString &staff,
                         const BookingRequest &request);

/// What btn_Book does before the booker is asked for: the first selected row that is past or taken refuses everything;
/// then the staff member is verified. Nothing when either failed.
std::optional<Verification> startBooking(Station &station, const DaySelection &selection);

/// Books every selected row for one booker; a refused row shows its message and the others go on. Adds each row that
/// was booked or refused to `handled`. Throws DbError.
void bookSelection(Station &station, BookingClipboard &clipboard, const QString &staff, const DaySelection &selection,
                   const Booker &booker, bool fromWaitingList, std::vector<int> *handled = nullptr);
