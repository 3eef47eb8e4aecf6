#pragma once

#include "support/PrivateServer.h"
#include "support/TestStation.h"

/// What database/check.sql finds on a test's server, one line a fault: "fault|slot|field|words".
QStringList findings(const PrivateServer &server, const QStringList &pairs = sharedPairs);
