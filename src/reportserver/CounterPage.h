#pragma once

#include "reportserver/PageFrame.h"

/// The sales and shifts of one counter in a period. Throws DbError.
QByteArray counterPage(const PageWork &work, int counter);
