#pragma once

#include "reportserver/PageFrame.h"
#include "reportserver/TillFigures.h"

#include <map>

/// Parts of pages about what the counters took.
namespace TillParts {

using ByCounter = std::map<int, TillFigures>;

Takings sumOf(const ByCounter &till);
/// Takings of each counter by kind; for more than a day those of each day too.
QString takings(const PageWork &work, const ByCounter &till);
/// Nothing for a single day.
QString takingsByDay(const PageWork &work, const ByCounter &till);
QString goods(const ByCounter &till);
/// By counter.
QString shifts(const std::map<int, std::vector<ShiftAccount>> &shifts);

} // namespace TillParts
