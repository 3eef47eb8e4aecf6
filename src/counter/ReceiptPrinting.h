#pragma once

#include "counter/PrinterDesk.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

struct Station;

/// Prints receipts and invoices, or saves them. The printer is asked for until staff say that it is to be used without
/// asking; that is kept in the settings. A printer that does not print is told in plain words, with the file as the way
/// out; nothing here waits for a printer.
class ReceiptPrinting : public QObject
{
    Q_OBJECT

public:
    ReceiptPrinting(Station &station, PrinterDesk &desk, QObject *parent = nullptr);

    /// Prints on the printer that is used without asking, else asks for one.
    void print(const Receipt &receipt, QWidget *over);
    /// Asks for a file and writes it; false when it was cancelled or could not be written, which staff have been told.
    bool saveAsPdf(const Receipt &receipt, QWidget *over);

    /// The printer that is used without asking, empty for none.
    [[nodiscard]] static QString printerWithoutAsking();
    static void askAgain();

Q_SIGNALS:
    /// The receipt is on its way to a printer or a file.
    void sent();

private:
    void goOn(const Receipt &receipt, std::optional<bool> isAny, const QPointer<QWidget> &over);
    void choosePrinter(const Receipt &receipt, QWidget *over);
    void send(const Receipt &receipt, const PrinterChoice &choice, QWidget *over);
    void offerToRemember(const PrinterChoice &choice);
    void tellTrouble(const Receipt &receipt, const QString &trouble, const QPointer<QWidget> &over);

    Station &m_station;
    PrinterDesk &m_desk;
    bool m_offered = false;
};
