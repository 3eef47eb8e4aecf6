#pragma once

#include <QString>

/// Makes a value fit to stand between single quotes: every ' becomes \' in place; the result is also returned.
/// A backslash is passed on as it stands, so a value that ends in one breaks its statement.
QString EscapeQuotes(QString &value);
