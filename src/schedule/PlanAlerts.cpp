#include "schedule/PlanAlerts.h"

#include "app/Errors.h"
#include "plan/LayoutPlan.h"

#include <algorithm>

PlanAlerts::PlanAlerts(Station &station, LayoutPlan &plan)
    : m_station(station), m_plan(plan), m_captions(std::size_t(std::max(0, station.settings.MaxFieldIndex + 1)))
{
}

void PlanAlerts::look()
{
    guarded(m_station.prompts, ErrorCode::Database, [this] { RefreshAlert(m_station, m_captions); });
    show(m_station.now().time().second() % 2 == 0);
}

bool PlanAlerts::goOnTo(QTime now)
{
    const AlertClock::Tick due = m_clock.tick(now);
    const bool raised = due.refresh && quietly(m_station.database, [this] { RefreshAlert(m_station, m_captions); });
    if (due.refresh && !raised)
        m_clock.failed();
    if (due.clear)
        std::fill(m_captions.begin(), m_captions.end(), QString());
    show(due.lit);
    return raised;
}

void PlanAlerts::show(bool lit)
{
    m_plan.setAlertCaptions(m_captions);
    m_plan.setAlertsLit(lit);
}
