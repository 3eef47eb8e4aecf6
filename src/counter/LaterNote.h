#pragma once

#include <QString>

class QVBoxLayout;

/// What a page says that has not been built yet.
void addLaterNote(QVBoxLayout &layout, const QString &title, const QString &sentence);
