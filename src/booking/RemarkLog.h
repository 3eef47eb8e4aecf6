#pragma once

#include "app/Operation.h"
#include "app/Station.h"

/// The audit trail of the slots: one row of tbl_remark for each thing done to a slot.
struct Remark
{
    SlotKey slot;
    QString text;  ///< as typed, it is quoted here
    QString job;   ///< "book", "cancel", "change rate", "extra time" or "delete extra time"
    QString staff; ///< login name of who confirmed it
    /// What stands before m_datetime; the row of a booking itself has two blanks there.
    QString gap = QStringLiteral(" ");
};

/// Writes the remark with now and the clock text of the main window; its row is the operation's proof. Throws DbError.
void writeRemark(const Station &station, Operation &operation, const Remark &remark);

/// What was done to a slot, one line for each remark in the order of m_id (tbl_remark), then the staff name of an old
/// record and the rate package (tbl_booking). Lines end in CR LF; empty when nothing was found. Throws DbError.
QString slotHistory(Database &database, const SlotKey &slot);
