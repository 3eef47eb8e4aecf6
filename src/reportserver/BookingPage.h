#pragma once

#include "reportserver/PageFrame.h"

/// The bookings and takings of a period. Throws DbError.
QByteArray bookingPage(const PageWork &work);
