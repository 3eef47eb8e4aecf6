#pragma once

#include "app/DayRow.h"
#include "counter/ReceiptPrinting.h"
#include "counter/Settlement.h"
#include "counter/Store.h"
#include "counter/SystemPrinters.h"
#include "counter/Till.h"

#include <QObject>
#include <QStringList>

class QWidget;
class frm_Change;

/// Everything that is done at the till, by button, key, touch or scanner: fills the payment list, takes the money,
/// prints, opens the drawer. Says what changed.
class TillActions : public QObject
{
    Q_OBJECT

public:
    /// Windows open over `window`.
    TillActions(Station &station, QWidget *window);

    [[nodiscard]] const Till &till() const { return m_till; }
    /// The lines that the last settlement stumbled over.
    [[nodiscard]] const std::vector<RefusedLine> &refused() const { return m_refused; }

    /// Brings back what the counter's file has kept, and says so.
    void open();
    void addHours(const DaySelection &selection);
    /// Asks for the quantity, or for the price of what has none. A number that is there at the beginning is replaced by
    /// the first digit.
    /// Gives the code that was scanned meanwhile, for the next item.
    QString addItem(const StoreItem &item, const QString &number = {});
    void addQuantity(const QString &name, const QString &unitPrice, const QString &quantity);
    void remove(int line);
    /// Empties the list; bringBack() undoes it until the next line.
    void reset();
    void bringBack();
    [[nodiscard]] bool canBringBack() const { return m_till.list().isEmpty() && !m_thrownAway.isEmpty(); }
    void hold();
    void recall(std::size_t index);
    void pay();
    void noSale();
    void printOldReceipt();
    void printLastReceipt();
    void printInvoice(const DaySelection &selection);
    /// "Kobayashi (15:02, 12.00)"
    [[nodiscard]] QStringList namesOfHeldLists() const;
    /// These and the open one.
    [[nodiscard]] QStringList namesOfWaitingLists() const;
    /// The names of the payment lists of this counter that an item stands on.
    [[nodiscard]] QStringList listsHolding(const QString &itemName) const;
    /// Names the lists on hold to who leaves the counter.
    void tellOfHeldLists();

Q_SIGNALS:
    void listChanged();
    /// Hours were paid or invoiced, or are not what the grid shows.
    void hoursTouched();
    void stockTouched();
    /// A quantity was keyed, before its line is added.
    void quantityChosen(const QString &quantity);
    void changeGiven(const QString &change);

private:
    /// Changes the list; false after an error, which staff have seen.
    bool change(const std::function<void(PaymentList &)> &step);
    void changed();
    /// False when the list is a sale already, or nobody can know: then staff have been told.
    bool isOpen();
    bool wasRecorded();
    void tellOfRecord();
    bool settleList(frm_Change &window);
    void refuse(std::vector<RefusedLine> refused, frm_Change &window);
    void closeSale();
    void print(const std::function<std::optional<Receipt>()> &describe, bool isShown = false);

    Station &m_station;
    QWidget *m_window;
    Till m_till;
    SystemPrinters m_printers;
    ReceiptPrinting m_printing;
    PaymentList m_thrownAway;
    std::vector<RefusedLine> m_refused;
    bool m_toldOfFile = false;
};
