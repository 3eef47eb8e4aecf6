#pragma once

#include <QStringList>

#include <initializer_list>

/// A test's rows drawn as text, one a line, the row's name first and then a text for each column:
///     first hour | 2026-11-14 | 8
/// The columns' names must be literals: QtTest keeps no copy.
void drawnRows(std::initializer_list<const char *> columns, const QString &table);

/// "a; b" is a and b; an empty text is no entry.
QStringList listOf(const QString &text);
