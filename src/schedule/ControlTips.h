#pragma once

class QTabWidget;
class QWidget;

/// Gives the main window's controls their tips: whole sentences that say what a control does, and its key. One that has
/// a tip of its own keeps it; the grid tells the history of an hour instead.
void addControlTips(QWidget &window);
void addTabTips(QTabWidget &tabs);
