#pragma once

#include "counter/SerialPort.h"

struct Station;

/// The cash drawer on its serial port, as the settings say. Each window that opens the drawer has one of its own, which
/// holds the port from its first opening until the window goes. Throws SerialError.
class CashDrawer
{
public:
    explicit CashDrawer(Station &station);

    /// For a window that opens the drawer when it comes up: once, however often it is called. Says "Cannot found
    /// drawer" when this port is open already.
    /// False when nothing was opened now.
    bool openOnce();
    /// After a sale: opens the drawer each time, on a port that stays open.
    void openAfterSale();

    /// "FirstDone" once the port has been opened.
    [[nodiscard]] const QString &mark() const { return m_mark; }

private:
    [[nodiscard]] bool exists() const;
    void choosePort();
    void setLine();

    Station &m_station;
    SerialPort m_port;
    QString m_mark;
};
