#pragma once

#include "app/BusinessDay.h"
#include "app/Customer.h"
#include "app/Database.h"
#include "app/Formats.h"
#include "app/Prompts.h"
#include "app/Settings.h"
#include "app/SharedFields.h"

#include <QDateTime>

#include <functional>
#include <optional>

/// One running copy at one counter: what every operation may need. Built once at start-up and handed on by reference.
struct Station
{
    Station(AppSettings appSettings, Prompts &stationPrompts,
            std::function<QDateTime()> stationClock = &QDateTime::currentDateTime)
        : settings(std::move(appSettings)),
          shared(settings),
          database(settings.ConnectionString),
          prompts(stationPrompts),
          clock(std::move(stationClock))
    {
    }

    [[nodiscard]] WorkingHours hours() const { return {settings.firstHour, settings.lastHour}; }

    /// Wall-clock time; its zone plays no part anywhere.
    [[nodiscard]] QDateTime now() const { return clock(); }

    /// Moves timeText to the present moment and gives it.
    const QString &readClock() { return timeText = clockText(now()); }

    AppSettings settings;
    SharedFields shared;
    Database database;
    Prompts &prompts;
    std::function<QDateTime()> clock;
    QString CurrentStaff; ///< login name of the staff member at this counter
    QString shiftName; ///< "morning" or "evening": as the main window was opened, or of the shift that was ended last
    /// Chosen in a register for the next booking or waiting-list entry.
    std::optional<Customer> keptCustomer;
    QString timeText; ///< the clock as the main window shows it, written into every remark
};
