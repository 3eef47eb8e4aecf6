#pragma once

#include "counter/KeyedDialog.h"

class Prompts;
class QLineEdit;

/// Asks for the price of something that is not in the catalogue. OK closes it, accepted when there is a price; a price
/// that is no number goes to the error window, and the window stays.
class frm_MiscItem : public KeyedDialog
{
    Q_OBJECT

public:
    frm_MiscItem(Prompts &prompts, const QString &itemName, QWidget *parent = nullptr);

    /// Under ##0.00; empty unless it was accepted.
    [[nodiscard]] const QString &price() const { return m_typed; }

protected:
    bool takeKey(const QKeyEvent & /*event*/) override { return false; }
    void takeScan(const QString &digits) override;

private:
    void addKeys();
    void takeOver();

    Prompts &m_prompts;
    QLineEdit *m_price;
    QString m_typed;
};
