#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>
#include <vector>

class QMenu;

/// A line of a menu's table; one without a name is a separator.
struct MenuEntry
{
    QString name;
    QString text;
    QString icon; ///< bare name of the drawing, or empty
    std::function<void()> handler;
    QKeySequence key = {}; ///< works in the widget that has the menu's actions
};

void fillMenu(QMenu &menu, const std::vector<MenuEntry> &entries);
