#pragma once

#include <QString>

#include <functional>

class WindowDriver;

/// What the tour's scenes need besides the driver.
struct TourHelp
{
    /// Saves a picture of the screen under this name.
    std::function<void(const QString &)> picture;
    /// The sample centre's administrator says who they are.
    std::function<void()> verifyAdministrator;
};

/// Adds the scenes round bookings and till: a register, the options, a report, the end of a shift and the next login.
void addHouseTour(WindowDriver &driver, const TourHelp &help);
