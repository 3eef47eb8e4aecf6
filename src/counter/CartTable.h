#pragma once

#include "counter/Settlement.h"
#include "look/RowsTable.h"

/// ListView_Cart: the lines of the payment list, beside each for whom the hour is, or why it cannot be paid.
class CartTable : public RowsTable
{
    Q_OBJECT

public:
    explicit CartTable(QWidget *parent = nullptr);

    /// A line that was added is selected, else the selection stays as near as it can.
    void showLines(const PaymentList &list, const std::vector<RefusedLine> &refused);
    /// The selected line, -1 for none.
    [[nodiscard]] int line() const { return currentIndex().row(); }
};
