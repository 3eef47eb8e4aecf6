#pragma once

#include "BareClient.h"

/// Fills tbl_booking with a million bookings, half of all hours of 16 fields over 18 years round today, and nothing
/// else, and gives their number.
qint64 makeMillionBookings(BareClient &root);
