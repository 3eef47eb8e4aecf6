#pragma once

#include "counter/CashDrawer.h"
#include "counter/KeyedDialog.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>

class DigitKeys;
class QPushButton;

namespace Ui {
class frm_Change;
}

/// Takes the money for the payment list: the amount given is keyed, the change is shown, OK settles and opens the
/// drawer. Until then the window can be left without a trace; afterwards only a receipt and closing remain, and exec()
/// gives Accepted.
class frm_Change : public KeyedDialog
{
    Q_OBJECT

public:
    struct Work
    {
        /// Records the sale; true when it stands. Is not called again then. What it throws is shown, as no sale.
        std::function<bool()> settle;
        std::function<void()> printReceipt;
    };

    frm_Change(Station &station, const QString &total, Work work, QWidget *parent = nullptr);
    ~frm_Change() override;

    void done(int result) override;

Q_SIGNALS:
    /// The sale stands, and the drawer was asked to open.
    void changeGiven(const QString &change);
    /// The window was closed after it.
    void saleClosed();

protected:
    bool takeKey(const QKeyEvent &event) override;
    void takeScan(const QString &digits) override;
    bool isDeaf() const override { return m_isDeaf; }

private:
    void buildFigures();
    void buildQuickButtons();
    QPushButton *addQuickButton(const QString &name, const QString &caption, qint64 cents);
    void setDigits(const QString &digits);
    void showChange();
    void settle();
    void endSale();
    void printReceipt();
    /// Runs work that may wait, and forgets what is pressed meanwhile.
    void busily(const std::function<void()> &work);
    [[nodiscard]] bool isTooSoon() const;

    Station &m_station;
    const QString m_total;
    const Work m_work;
    CashDrawer m_drawer;
    const std::unique_ptr<Ui::frm_Change> m_ui;
    DigitKeys *m_keys;
    bool m_isBusy = false;
    bool m_isDeaf = false; ///< a little longer than busy
    bool m_isSettled = false;
    QElapsedTimer m_sincePress; ///< since the settlement, or a press that came too soon after it
};
