#pragma once

#include "counter/ScanReader.h"
#include "counter/StoreModel.h"
#include "look/Page.h"

struct Station;
class QLabel;
class QLayout;
class QLineEdit;
class QMenu;
class QPushButton;
class RowsTable;
class StoreView;
class TillActions;

/// The till: goods on one side, the payment list and what is done with it on the other.
class page_Counter : public Page
{
    Q_OBJECT

public:
    explicit page_Counter(Station &station, QWidget *parent = nullptr);

    /// Reads the items and brings back the payment list that was kept.
    void load();
    /// Reads the items (tbl_item), quietly; when that fails those that are shown stay.
    void RefreshStore();
    /// The keys begin in the list of items, where letters pay and digits are a scanner's, not in the find box.
    void refresh() override;
    void showTime(const QString &timeText) override;
    /// Alt+F, P and the plus of the number pad, F1 to F16, "/" and Esc of the find box, and what a scanner types.
    bool takeKey(const QKeyEvent &event) override;

    [[nodiscard]] TillActions &actions() { return *m_actions; }

Q_SIGNALS:
    void logOutWanted();
    /// What the payment list holds, in a few words; empty for nothing.
    void listShown(const QString &words);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *makeStore();
    QWidget *makeList();
    QLayout *makeEntry();
    QLayout *makeTotal();
    QLayout *makeButtons();
    QPushButton *addButton(QLayout &layout, const QString &name, const QString &text, const QString &icon,
                           void (TillActions::*handler)());
    void showList();
    void showLines();
    void showHeld();
    void showPriceOfQuantity();
    void choose(const StoreItem &item, const QString &number = {});
    void chooseKey(const QString &key);
    void askQuantity();
    void addTyped();
    bool takeFindKey(const QKeyEvent &event);
    bool takeScan(const QKeyEvent &event);
    void note(const QString &words);

    Station &m_station;
    TillActions *m_actions;
    StoreModel m_items;
    StoreView *m_store = nullptr;
    QLineEdit *m_find = nullptr;
    RowsTable *m_cart = nullptr;
    QLabel *m_time = nullptr;
    QLabel *m_total = nullptr;
    QLineEdit *m_itemInfo = nullptr;
    QLineEdit *m_quantity = nullptr;
    QLabel *m_itemPrice = nullptr;
    QLabel *m_change = nullptr;
    QLabel *m_note = nullptr;
    QPushButton *m_held = nullptr;
    QPushButton *m_bringBack = nullptr;
    QMenu *m_heldMenu = nullptr;
    ScanReader m_scan;
};
