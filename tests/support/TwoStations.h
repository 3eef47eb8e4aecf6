#pragma once

#include "app/Station.h"
#include "support/PrivateServer.h"

#include <QStringList>

#include <functional>

/// What somebody does at a station, and what it comes to in words.
using StationDeed = std::function<QString(Station &)>;

/// Two stations at the same moment: the first one is held before the first statement that begins with `held`, until the
/// second one is through or waits for it. Gives what both came to.
QStringList raceOfTwo(const PrivateServer &server, const QString &held, const StationDeed &first,
                      const StationDeed &second);
