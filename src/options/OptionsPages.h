#pragma once

#include <QString>

class PrinterDesk;
class QWidget;
class frm_Options;
struct Station;

/// Adds every page, in the order in which the list shows them. The desk outlives the window.
void addOptionsPages(frm_Options &window, Station &station, const QString &administrator, PrinterDesk &desk);

/// Opens the options over a window, for an administrator who has been verified; returns when they are closed.
void openOptions(Station &station, const QString &administrator, QWidget *over);
