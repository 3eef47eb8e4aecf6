#pragma once

#include "look/MenuEntry.h"

#include <QWidget>

/// The buttons over the grid: those of the slot menu, then how rows are selected and that the day is read again.
class SlotBar : public QWidget
{
    Q_OBJECT

public:
    explicit SlotBar(const std::vector<MenuEntry> &entries);

Q_SIGNALS:
    void severalToggled(bool on);
    void readingWanted();
};
