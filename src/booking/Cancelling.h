#pragma once

#include "app/DayRow.h"
#include "app/Station.h"

struct CancelRequest
{
    SlotKey slot;
    QString booker; ///< the text of the cell
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
    PaidItem,
    ChangedMeanwhile
};

/// What became of one clearing.
struct Cancelling
{
    CancelOutcome outcome = CancelOutcome::Cancelled;
    std::vector<SlotKey> freed = {}; ///< the slots that became free, its own first
    QString holder = {};             ///< who stands there instead, when it has changed meanwhile

    /// The refusal's text; empty for Cancelled and NoReason.
    [[nodiscard]] QString refusalText() const;
};

/// Deletes one booking with the marker rows that it made on shared fields (tbl_booking) and writes their remarks
/// (tbl_remark), whole or not at all. A slot that somebody else than the cell's booker holds by now stays. Shows
/// nothing. Throws DbError and NotDone.
Cancelling doCancel(Station &station, const QString &staff, const CancelRequest &request);

/// btn_Clear: the first selected row that may not be cleared refuses everything; then the staff member is verified and
/// asked for a reason, and every row is cleared, a refused one with its message. Adds the slots that became free to
/// `freed`, also on fields that share the ground and where extra time ran to. Throws DbError and NotDone.
void clearSelection(Station &station, const DaySelection &selection, std::vector<SlotKey> &freed);
