#include "counter/CashDrawer.h"

#include "app/Station.h"

using namespace Qt::StringLiterals;

CashDrawer::CashDrawer(Station &station) : m_station(station) {}

bool CashDrawer::exists() const
{
    return m_station.settings.drawerDevice != u"none"_s;
}

void CashDrawer::choosePort()
{
    const QString &device = m_station.settings.drawerDevice;
    if (device.isEmpty())
        m_port.CommPort(m_station.settings.drawerPort);
    else
        m_port.Device(device);
    setLine();
}

// Without line settings the port keeps its own.
void CashDrawer::setLine()
{
    if (!m_station.settings.drawerText.isEmpty())
        m_port.Settings(m_station.settings.drawerText);
}

bool CashDrawer::openOnce()
{
    if (!exists() || !m_mark.isEmpty())
        return false;
    choosePort();
    m_port.InputLen(0);
    if (m_port.PortOpen()) {
        m_station.prompts.inform(u"Cannot found drawer"_s, {}, MessageIcon::None);
        return false;
    }
    m_port.PortOpen(true);
    m_mark = u"FirstDone"_s;
    m_port.Output(m_station.settings.drawerCommand);
    return true;
}

void CashDrawer::openAfterSale()
{
    if (!exists())
        return;
    if (m_mark.isEmpty()) {
        choosePort();
        m_port.PortOpen(true);
        m_port.Output(m_station.settings.drawerCommand);
        m_mark = u"FirstDone"_s;
    } else {
        setLine();
        m_port.Output(m_station.settings.drawerCommand);
    }
}
