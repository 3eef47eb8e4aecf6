#pragma once

#include "app/Station.h"

#include <functional>
#include <vector>

enum class HealthState { Good, Attention, Bad };

/// What a look at the centre's database or at this counter has found.
struct HealthLine
{
    HealthState state = HealthState::Good;
    QString subject;
    QString words;       ///< how it is
    QString advice = {}; ///< what to do; empty when nothing has to be done
};

struct HealthLook
{
    QString name;
    std::function<std::vector<HealthLine>()> look; ///< reads only; throws DbError
};

/// Short looks, to be taken one after the other: the server and its settings, our tables, the clocks, the numbers that
/// are left, the newest backup, the drawer.
std::vector<HealthLook> healthLooks(Station &station);
