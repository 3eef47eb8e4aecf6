#pragma once

#include "counter/ScanReader.h"
#include "counter/StoreModel.h"
#include "look/Page.h"

struct Station;
class CartTable;
class ItemEntry;
class QLabel;
class QLayout;
class QLineEdit;
class QMenu;
class QPushButton;
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

private:
    QWidget *makeStore();
    QWidget *makeList();
    QLayout *makeTotal();
    QLayout *makeButtons();
    QPushButton *addButton(QLayout &layout, const QString &name, const QString &text, const QString &icon,
                           void (TillActions::*handler)());
    void showList();
    void showHeld();
    void choose(const StoreItem &item, const QString &number = {});
    void chooseKey(const QString &key);
    void chooseScanned(const QString &code);
    bool takeFindKey(const QKeyEvent &event);
    bool takeScan(const QKeyEvent &event);
    void note(const QString &words);

    Station &m_station;
    TillActions *m_actions;
    StoreModel m_items;
    StoreView *m_store = nullptr;
    QLineEdit *m_find = nullptr;
    CartTable *m_cart = nullptr;
    ItemEntry *m_entry = nullptr;
    QLabel *m_time = nullptr;
    QLabel *m_total = nullptr;
    QLabel *m_change = nullptr;
    QLabel *m_note = nullptr;
    QPushButton *m_held = nullptr;
    QPushButton *m_bringBack = nullptr;
    QMenu *m_heldMenu = nullptr;
    ScanReader m_scan;
    bool m_isLoaded = false;
    bool m_isStoreRead = false;
};
