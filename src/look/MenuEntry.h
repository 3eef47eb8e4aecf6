#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>
#include <vector>

class QMenu;
class QPushButton;

/// The button that does what a menu's entry does; none without a name.
struct EntryButton
{
    QString name;
    QString text = {}; ///< the entry's own when empty
    int place = 0;     ///< from the left; among equals the order of the table counts
};

/// A line of a menu's table; one without a name is a separator, or stands on a button alone.
struct MenuEntry
{
    QString name;
    QString text;
    QString icon; ///< bare name of the drawing, or empty
    std::function<void()> handler;
    EntryButton button = {};
    QKeySequence key = {}; ///< works in the widget that has the menu's actions
};

void fillMenu(QMenu &menu, const std::vector<MenuEntry> &entries);

/// The buttons of a menu's entries, from the left.
std::vector<QPushButton *> makeButtons(const std::vector<MenuEntry> &entries);
