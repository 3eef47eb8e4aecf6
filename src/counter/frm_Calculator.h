#pragma once

#include "counter/KeyedDialog.h"

class Prompts;
class QLabel;

/// The number pad for the quantity of an item. OK closes it, accepted when there is something to sell; a number that is
/// none or above 32767 goes to the error window, and the pad stays.
class frm_Calculator : public KeyedDialog
{
    Q_OBJECT

public:
    frm_Calculator(Prompts &prompts, const QString &itemName, const QString &unitPrice, QWidget *parent = nullptr);

    /// Begins with this number, which the first digit replaces.
    void preset(const QString &number);
    /// The code that was scanned over the pad: it took over what was keyed, and the next item is wanted.
    [[nodiscard]] const QString &scanned() const { return m_scanned; }
    /// As it was keyed.
    [[nodiscard]] QString quantity() const;

protected:
    bool takeKey(const QKeyEvent &event) override;
    void takeScan(const QString &digits) override;

private:
    QWidget *head(const QString &itemName);
    QWidget *buttons();
    /// What the next digit is put behind.
    [[nodiscard]] QString number() const;
    void showNumber(const QString &number);
    void takeOver();

    Prompts &m_prompts;
    QString m_unitPrice;
    QLabel *m_number; ///< its text is what was keyed
    QLabel *m_price;
    QString m_scanned;
    QString m_presetNumber;
    bool m_isPreset = false; ///< the number was not keyed
};
