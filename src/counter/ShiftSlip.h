#pragma once

#include "counter/Receipt.h"
#include "counter/ShiftFigures.h"

/// A shift's figures on the receipt paper. All read the counter's tables and throw DbError.

/// Of the shift that goes on; the total is the money that should be in the drawer.
Receipt interimSlip(Station &station);
/// Of a shift that was ended; the total is its sales.
Receipt closingSlip(Station &station, const EndedShift &shift);
/// A slip's lines as plain text.
QString slipText(const Receipt &slip);
