#pragma once

#include "counter/CashDrawer.h"
#include "counter/KeyedDialog.h"

class QLabel;
struct Station;

/// A window that opens the drawer when it comes up, and says whether it did.
class DrawerDialog : public KeyedDialog
{
    Q_OBJECT

protected:
    explicit DrawerDialog(Station &station, QWidget *parent);

    /// Where it says so; to be placed by the window.
    [[nodiscard]] QLabel *drawerWords() { return m_words; }

    void showEvent(QShowEvent *event) override;
    bool takeKey(const QKeyEvent & /*event*/) override { return false; }
    /// Takes the digits back from the box that they were typed into.
    void takeScan(const QString &digits) override;

private:
    void openDrawer();

    Station &m_station;
    CashDrawer m_drawer;
    QLabel *m_words;
};
