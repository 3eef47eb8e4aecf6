#pragma once

#include "reportserver/BookingFigures.h"
#include "reportserver/ReportSettings.h"

/// The occupancy of the fields as a picture (SVG with its caption), hours downwards and fields across, as the counters'
/// grids run. A day shows what each hour is, in a letter and a colour; a longer period how many of its days are booked,
/// in percent.
QString occupancyPicture(const BookingFigures &figures, const ReportPeriod &period, const ReportSettings &settings);
