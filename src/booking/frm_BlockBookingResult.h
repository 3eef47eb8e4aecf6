#pragma once

#include "booking/BlockBooking.h"

#include <QDialog>

class RowsTable;

/// What became of each hour of a block booking, in one table with its counts above.
class frm_BlockBookingResult : public QDialog
{
    Q_OBJECT

public:
    /// planned is how many hours the block has, more than there are results when an error ended it; heading says who
    /// was booked where.
    frm_BlockBookingResult(const std::vector<BlockBookingHour> &results, std::size_t planned, const QString &heading,
                           QWidget *parent = nullptr);

private:
    static RowsTable *makeTable(const std::vector<BlockBookingHour> &results);
};
