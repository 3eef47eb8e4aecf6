#pragma once

#include "counter/CashDrawer.h"
#include "counter/KeyedDialog.h"

class QLabel;

/// Opens the drawer when it comes up, and says whether it did.
class frm_DrawerOpen : public KeyedDialog
{
    Q_OBJECT

public:
    explicit frm_DrawerOpen(Station &station, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    bool takeKey(const QKeyEvent & /*event*/) override { return false; }
    void takeScan(const QString & /*digits*/) override {}

private:
    void openDrawer();

    Station &m_station;
    CashDrawer m_drawer;
    QLabel *m_words;
};
