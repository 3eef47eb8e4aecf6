#pragma once

#include "app/DayRow.h"
#include "app/Station.h"

struct CancelRequest
{
    QString date; ///< "yyyy-mm-dd" of the business day
    QString hour; ///< "hh:mm", midnight "24:00"
    QString booker;
    int field = 0;
    QString reason;
};

enum class CancelOutcome {
    Cancelled,
    NoReason,
    PreviousEntry,
    ExtraTime,
    PartiallyShared,
    SharedBooking,
    FieldEmpty,
    PaidItem
};

/// The refusal's text; empty for Cancelled and NoReason.
QString refusalText(CancelOutcome outcome);

/// Deletes one booking with the marker rows that it made on shared fields (tbl_booking) and writes their remarks
/// (tbl_remark). Adds the slots that became free with it, its own first, to `freed`. Shows nothing. Throws DbError;
/// what was written stays.
CancelOutcome doCancel(Station &station, const QString &staff, const CancelRequest &request,
                       std::vector<SlotKey> *freed = nullptr);

/// btn_Clear: the first selected row that may not be cleared refuses everything; then the staff member is verified and
/// asked for a reason, and every row is cleared, a refused one with its message. Adds the slots that became free to
/// `freed`, also on fields that share the ground and where extra time ran to. Throws DbError.
void clearSelection(Station &station, const DaySelection &selection, std::vector<SlotKey> &freed);
