#pragma once

#include "app/DayRow.h"
#include "booking/BookingClipboard.h"
#include "look/MenuEntry.h"

#include <QMenu>
#include <QObject>

#include <functional>

/// Everything that can be done to the selected hours, by menu, button or key: each asks for the selection, calls its
/// operation and says what changed.
class SlotActions : public QObject
{
    Q_OBJECT

public:
    using Selection = std::function<DaySelection()>;

    /// Windows open over `window`.
    SlotActions(Station &station, BookingClipboard &clipboard, Selection selection, QWidget *window);

    /// mnu_Mouse with its entries.
    [[nodiscard]] QMenu *menu() { return m_menu; }
    /// What the menu is made of, and the buttons.
    [[nodiscard]] const std::vector<MenuEntry> &entries() const { return m_entries; }
    void addSpecialGroup(int group);

    void book();
    void clear();
    void addWaitingEntry();
    void copy();
    void paste();
    /// Tells what was done to the current row's slot, for those who have no pointer that rests.
    void showHistory();

signals:
    /// An operation may have changed the day; `ok` is false when it ended in an error that staff have seen.
    void dayTouched(bool ok);
    void waitingListTouched();
    /// The selected hours are to be put on the payment list, or on an invoice.
    void paymentWanted(const DaySelection &selection);
    void invoiceWanted(const DaySelection &selection);
    void clipboardChanged();
    /// These slots are free now.
    void slotsFreed(const std::vector<SlotKey> &freed);

private:
    void addRateEntry(const QString &name, const QString &rateInWords, const QString &rateType);
    void addEntries(const std::vector<MenuEntry> &entries);
    void buildMenu();
    /// Runs an operation on the selection and reports that the day was touched; false after an error, which staff have
    /// seen, or when nothing is selected.
    bool run(const std::function<void(const DaySelection &)> &operation, int errorCode);
    bool hasField();
    bool hasRows(const DaySelection &selection);
    void pay();
    void printInvoice();
    void addExtraTime(qint16 minutes);
    void clearAddition();
    void changeRate(const QString &rateType);
    void blockBook(int weeks);

    Station &m_station;
    BookingClipboard &m_clipboard;
    Selection m_selection;
    QWidget *m_window;
    QMenu *m_menu;
    std::vector<MenuEntry> m_entries;
    QMenu *m_rates = nullptr;
};
