#pragma once

#include "app/Station.h"

#include <array>
#include <vector>

/// The five light rows of a field, true for on.
using LightRows = std::array<bool, 5>;

/// One row of tbl_light.
struct LightCommit
{
    QString when; ///< "yyyy-mm-dd hh:mm:ss"
    QString staff;
    LightRows rows = {};
};

/// Stores the light states of a field as a new row of tbl_light, once a staff member has confirmed who they are and
/// that it is meant. False when they did not: nothing is written. Throws DbError and NotDone.
bool commitLights(Station &station, int field, const LightRows &rows);

/// A field's last commits, newest first. Throws DbError.
std::vector<LightCommit> lastLightCommits(Database &database, int field, int limit);
