#pragma once

#include "counter/ShiftFigures.h"
#include "look/RowsTable.h"

/// A shift's figures below each other: what it is, how many, how much money.
class FiguresTable : public RowsTable
{
    Q_OBJECT

public:
    explicit FiguresTable(const QString &objectName, QWidget *parent = nullptr);

    /// `cashFloat` is what the shift before left in the drawer.
    void showFigures(const ShiftFigures &figures, double cashFloat);

private:
    void addFigure(const QString &words, const QString &count, const QString &amount, bool isSum = false);
};

/// "345.00 counted, 350.00 should be there: 5.00 short".
QString differenceWords(double counted, double expected);
