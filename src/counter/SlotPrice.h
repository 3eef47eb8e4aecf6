#pragma once

#include "app/DayRow.h"

struct Station;

/// What a booked hour costs, extra time included.
struct SlotPrice
{
    QString rateType;
    int extraMinutes = 0;
    double price = 0;    ///< of one hour
    double quantity = 1; ///< hours charged
    double total = 0;    ///< price and the extra minutes' share of it, to the cent
};

/// The price of an hour by its booking (tbl_booking) and the rates (tbl_rate). Tells staff of a special rate and of
/// extra time. Throws DbError.
SlotPrice priceOfSlot(Station &station, const SlotKey &slot);

/// What a refusal to charge for a row says where paying and invoicing differ.
struct ChargeRefusals
{
    QString freeSlot;
    QString extraTime;
    QString sharedBooking;
};

/// Why nothing can be charged for the row; empty when it can.
QString reasonNotToCharge(const DayRow &row, const ChargeRefusals &texts);

/// How a line names a slot: "Field Number 7 14/11/2026 20:00", the field from 1.
QString slotLineText(const SlotKey &slot);
/// The condition that a line (c_item of tbl_counter) names a slot; goods may be called Field Number too.
QString isSlotLine();

/// The amount as it is written on a line: to the cent, halves away from zero.
double roundedToCents(double amount);
