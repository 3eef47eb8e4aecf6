#pragma once

#include "app/Station.h"
#include "counter/PaymentList.h"

#include <functional>
#include <optional>
#include <vector>

/// A line of the payment list that is not what it was when it was added.
struct RefusedLine
{
    std::size_t line; ///< in the list's order
    QString why;      ///< "Court 1 20:00 was paid at another counter"
};

/// What became of a payment list: a sale under a number, or lines that stand against it.
struct Settlement
{
    std::optional<qint16> transaction = {};
    std::vector<RefusedLine> refused = {};
};

/// Turns the list into a sale of this counter: its lines (tbl_counter and the number), hours marked as paid
/// (tbl_booking), hours played of members, students and groups, stock (tbl_item), whole or not at all. A booked hour
/// that is paid, gone, somebody else's, or at another rate or extra time by now refuses all of it. Writes the activity
/// log afterwards. Tells the number before, so that the sale can be looked for when nobody hears of its end. Throws
/// DbError, NotDone, and ConversionError above transaction 32767.
Settlement settle(Station &station, const PaymentList &list, const std::function<void(int)> &tellNumberBefore = {});

/// The number of a sale of exactly these lines with a number above `after`, recorded at this counter since `since`; for
/// a list whose settlement's end nobody heard. Throws DbError.
std::optional<qint16> recordedSale(Station &station, const PaymentList &list, int after, const QDateTime &since);
