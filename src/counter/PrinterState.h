#pragma once

#include <QString>

/// How a printer's queue is, as the system says; it may wait long for the answer, so it is asked off the windows'
/// thread.
struct PrinterState
{
    bool isThere = false;
    bool takesJobs = true; ///< false: paused, stopped, or closed
    bool isIdle = true;    ///< nothing is being printed
    QString trouble = {};  ///< what keeps the printer itself from printing: "is out of paper", empty for nothing

    static PrinterState of(const QString &printer);
};
