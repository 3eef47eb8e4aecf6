#pragma once

#include <QString>

#include <fcntl.h>
#include <stdexcept>
#include <stdlib.h>
#include <unistd.h>

/// The far end of a serial device.
class PseudoTerminal
{
public:
    PseudoTerminal() : m_end(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (m_end < 0 || grantpt(m_end) != 0 || unlockpt(m_end) != 0)
            throw std::runtime_error("no pseudo-terminal");
    }
    ~PseudoTerminal() { close(m_end); }
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    [[nodiscard]] QString path() const { return QString::fromLocal8Bit(ptsname(m_end)); }
    /// What has arrived since the last time, as far as it is there.
    [[nodiscard]] QByteArray arrived() const
    {
        QByteArray all;
        QByteArray some(65536, '\0');
        for (ssize_t got = 0; (got = read(m_end, some.data(), std::size_t(some.size()))) > 0;)
            all += some.first(got);
        return all;
    }

private:
    int m_end;
};
