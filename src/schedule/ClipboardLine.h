#pragma once

#include "booking/BookingClipboard.h"
#include "look/ElidedLabel.h"

/// The line below the grid that says what a paste would book, at which rate, and where it is from.
class ClipboardLine : public ElidedLabel
{
public:
    ClipboardLine();

    void showClipboard(const BookingClipboard &clipboard, const AppSettings &settings, const QString &kept);
};
