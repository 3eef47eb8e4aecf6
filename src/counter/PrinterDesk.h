#pragma once

#include "counter/Receipt.h"
#include "counter/ReceiptPaper.h"

#include <functional>
#include <memory>
#include <optional>

class QPrinter;
class QWidget;

/// A printer, and how it prints.
struct PrinterChoice
{
    QString name;                           ///< empty for a file that was chosen instead
    std::optional<Paper> paper = {};        ///< without one it goes by the printer's pages
    std::shared_ptr<QPrinter> printer = {}; ///< as the printer dialog set it; without one, as the printer is
};

/// The printers that receipts go to, and the windows that ask for them. Nothing here keeps the windows waiting for a
/// printer: what is told is told later. A test puts its own desk in this one's place.
class PrinterDesk
{
public:
    PrinterDesk() = default;
    PrinterDesk(const PrinterDesk &) = delete;
    PrinterDesk &operator=(const PrinterDesk &) = delete;
    virtual ~PrinterDesk() = default;

    /// Tells whether there is any printer, or nothing when the system does not answer.
    virtual void lookForPrinters(std::function<void(std::optional<bool>)> told) = 0;
    /// The standard printer dialog; nothing when it was cancelled.
    virtual std::optional<PrinterChoice> choose(QWidget *over) = 0;
    /// Prints, and tells in a plain sentence what stands against it; empty when nothing does.
    virtual void print(const Receipt &receipt, const PrinterChoice &choice,
                       std::function<void(QString trouble)> told) = 0;
    /// Where to save a file; empty when it was cancelled.
    virtual QString askForFile(QWidget *over, const QString &suggestion) = 0;
};
