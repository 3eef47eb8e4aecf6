#pragma once

#include "app/DayRow.h"
#include "app/Station.h"
#include "counter/PaymentList.h"

#include <functional>

/// btn_Paid: adds the selected hours to the payment list, in the grid's order. The first that cannot be paid shows why
/// and ends it; those before it stay added. `add` is called for each. Reads tbl_booking and tbl_rate. Throws DbError.
void payHours(Station &station, const DaySelection &selection, const PaymentList &list,
              const std::function<void(const BookedHour &, const SlotPrice &)> &add);
