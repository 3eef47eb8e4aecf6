#pragma once

#include "counter/Receipt.h"

#include <QDialog>

class QCheckBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class ReceiptPrinting;

/// A receipt or an invoice as it will be printed, in one window with the buttons that print and save it. The lines
/// stand in arrays of labels, at least eleven rows of them. It closes when the receipt is on its way.
class frm_PrintReceipt : public QDialog
{
    Q_OBJECT

public:
    frm_PrintReceipt(const Receipt &receipt, ReceiptPrinting &printing, QWidget *parent = nullptr);

private:
    QLabel *label(const QString &name, const QString &text, Qt::Alignment alignment = Qt::AlignLeft);
    QHBoxLayout *heading(const Receipt &receipt);
    QGridLayout *titleLines(const Receipt &receipt);
    QWidget *lines(const Receipt &receipt);
    QHBoxLayout *total(const Receipt &receipt);
    QHBoxLayout *buttons(const Receipt &receipt, ReceiptPrinting &printing);
    [[nodiscard]] QCheckBox *withoutAsking();
};
