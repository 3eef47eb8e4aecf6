#pragma once

#include "app/BusinessDay.h"
#include "app/Settings.h"

/// What the report server knows of its centre and of itself. It is read once, from a file in the form of a counter's
/// settings, and never written.
struct ReportSettings
{
    AppSettings centre;    ///< hours, fields and the way to the database; everything else is left as it is
    QString centreName;    ///< the first line of the address; empty when there is none
    QString listenAddress; ///< loopback unless told otherwise
    int port = 0;          ///< 0 takes any that is free

    [[nodiscard]] WorkingHours hours() const { return {centre.firstHour, centre.lastHour}; }
    [[nodiscard]] int fields() const { return centre.MaxFieldIndex + 1; }
    /// Also of a field that is not set up any more.
    [[nodiscard]] QString fieldName(int field) const;
};

/// Throws std::runtime_error with a sentence for the operator: a file that cannot be read, a setting that will not do.
ReportSettings readReportSettings(const QString &fileName);
