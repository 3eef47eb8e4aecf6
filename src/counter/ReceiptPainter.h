#pragma once

#include "counter/Receipt.h"
#include "counter/ReceiptPaper.h"

class QPagedPaintDevice;

/// Writes a receipt onto paper: heading, lines under their column heads, the total once at the end. A roll is as long
/// as it needs to be; sheets go on as often as needed, with the column heads and the page number on each. False when
/// the device cannot be written to.
bool paintReceipt(const Receipt &receipt, Paper paper, QPagedPaintDevice &device);

/// The same as a file, which is there whole or not at all. Empty, or why it could not be written.
QString savePdf(const Receipt &receipt, Paper paper, const QString &fileName);
