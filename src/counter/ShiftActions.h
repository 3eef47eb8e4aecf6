#pragma once

#include "counter/ReceiptPrinting.h"
#include "counter/ShiftFigures.h"
#include "counter/SystemPrinters.h"

#include <QObject>

struct Station;
class TillActions;

/// What is done when people change at the counter: shifts are ended, the counter is handed over, cash collected.
class ShiftActions : public QObject
{
    Q_OBJECT

public:
    /// Windows open over `window`. The till tells which payment lists are on hold.
    ShiftActions(Station &station, const TillActions &till, QWidget *window);

    /// Asked before a shift is ended, because its staff are logged out then.
    void setMayLeave(std::function<bool()> mayLeave) { m_mayLeave = std::move(mayLeave); }

    void endMorningShift() { endShift(u"morning"); }
    void endEveningShift() { endShift(u"evening"); }
    void handOver();
    void collectCash();
    /// The figures of the shift that goes on, on receipt paper.
    void printInterimSlip();
    void printSlip(const EndedShift &shift);
    /// The counter's report page in the system's web browser.
    void openReport();
    /// The slip's text, for a mail; empty after an error, which staff have seen.
    [[nodiscard]] QString interimText();

Q_SIGNALS:
    /// Another staff member serves the counter.
    void staffChanged();
    /// The shift was ended and its window closed.
    void shiftClosed();
    /// The counter's shift table or log has something new.
    void recorded();

private:
    void endShift(QStringView name);
    void show(const std::function<Receipt()> &describe);

    Station &m_station;
    const TillActions &m_till;
    QWidget *m_window;
    std::function<bool()> m_mayLeave = [] { return true; };
    SystemPrinters m_printers;
    ReceiptPrinting m_printing;
};
