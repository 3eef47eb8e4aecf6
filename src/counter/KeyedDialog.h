#pragma once

#include "counter/ScanReader.h"

#include <QDialog>

class QKeyEvent;

/// A window of the till: it takes its own keys wherever its focus stands, and what is held down presses nothing. A
/// cashier's finger that still lies on Enter would answer windows that nobody has read.
class KeyedDialog : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

protected:
    /// To be called when all controls are there.
    void watchKeys();
    /// The window's own keys; true for one that goes no further.
    virtual bool takeKey(const QKeyEvent &event) = 0;
    /// A scanner's digits and Enter are no amount and press nothing; what they typed is to be taken back.
    virtual void takeScan(const QString &digits) = 0;
    /// Whether presses are forgotten now, of the mouse too.
    [[nodiscard]] virtual bool isDeaf() const { return false; }

    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    /// Enter, Space or Esc.
    static bool isPressing(const QKeyEvent &event);
    /// The code of the character that the key gives, 8 for Backspace; 0 with Ctrl, Alt or Meta.
    static int codeOf(const QKeyEvent &event);

private:
    bool handles(const QKeyEvent &event);
    bool endsScan(const QKeyEvent &event);

    ScanReader m_scan;
};
