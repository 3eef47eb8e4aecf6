#pragma once

#include "app/Settings.h"
#include "plan/HotSpots.h"

class SettingsDraft;

/// A plan of the centre as the settings file has it: its picture, where that stands, and the fields' places on it.
struct PlanSettings
{
    QString section;     ///< "Layout" or "WaitingList"
    QString spotSection; ///< "HotSpot" or "HotSpot2"
    PicturePlacement picture = {};
    std::vector<std::optional<HotSpot>> spots = {};

    /// A picture that is not placed in numbers has none of them.
    static PlanSettings read(const QString &section, const QString &spotSection, int fields);

    [[nodiscard]] bool sameAs(const PlanSettings &other) const;
    /// Puts what differs from `before` into a draft, with its lines for the log. `name` is the plan's: "ground plan".
    void addTo(SettingsDraft &draft, const PlanSettings &before, const QString &name,
               const std::vector<QString> &fieldNames) const;
};
