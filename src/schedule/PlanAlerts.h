#pragma once

#include "plan/Alerts.h"

class LayoutPlan;

/// The alerts on a plan, where the players must make way: raised and cleared by the clock or looked for by a person;
/// they blink.
class PlanAlerts
{
public:
    PlanAlerts(Station &station, LayoutPlan &plan);

    /// Looks for them now; an error is shown with code 3.
    void look();
    /// Once a second. True when they were raised just now.
    bool goOnTo(QTime now);

private:
    void show(bool lit);

    Station &m_station;
    LayoutPlan &m_plan;
    AlertClock m_clock;
    std::vector<QString> m_captions;
};
