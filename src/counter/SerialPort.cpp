#include "counter/SerialPort.h"

#include "app/ProfileFile.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

#define ASIO_STANDALONE
#include <asio.hpp>

#ifndef Q_OS_WIN
#include <sys/file.h>
#include <sys/ioctl.h>
#endif

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

#ifdef Q_OS_WIN
using LineState = DCB;
#else
using LineState = termios;
#endif

constexpr auto patience = 900ms;

QString wordsOf(SerialError::Number number)
{
    switch (number) {
    case SerialError::DeviceUnavailable:
        return u"Device unavailable"_s;
    case SerialError::InvalidValue:
        return u"Invalid property value"_s;
    case SerialError::NotWhileOpen:
        return u"Operation not valid while the port is opened"_s;
    case SerialError::InvalidPort:
        return u"Invalid Port Number"_s;
    case SerialError::AlreadyOpen:
        return u"Port already open"_s;
    case SerialError::NotSet:
        return u"Could not set comm state"_s;
    case SerialError::NotOpen:
        return u"Operation valid only when the port is open"_s;
    case SerialError::Busy:
        break;
    }
    return u"Device busy"_s;
}

QString systemWords(const asio::error_code &error)
{
    return QString::fromLocal8Bit(error.message().c_str());
}

QString portName(int number)
{
#ifdef Q_OS_WIN
    return u"\\\\.\\COM"_s + QString::number(number);
#else
    return u"/dev/ttyS"_s + QString::number(number - 1);
#endif
}

#ifdef Q_OS_WIN
constexpr std::array noSuchPort{ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_INVALID_NAME};
constexpr std::array heldByOthers{ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION};
#else
constexpr std::array noSuchPort{ENOENT, ENODEV, ENXIO, EIO};
constexpr std::array heldByOthers{EBUSY, EWOULDBLOCK};
#endif

SerialError::Number openingError(const asio::error_code &error)
{
    const auto isOneOf = [&error](const auto &codes) {
        return std::ranges::any_of(codes, [&error](auto code) { return static_cast<int>(code) == error.value(); });
    };
    if (isOneOf(noSuchPort))
        return SerialError::InvalidPort;
    return isOneOf(heldByOthers) ? SerialError::AlreadyOpen : SerialError::NotSet;
}

// Characters up to 255 are their byte, the others the byte that Windows-1252 has for them.
QByteArray bytesOf(const QString &text)
{
    QByteArray bytes = toWindows1252(text);
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i].unicode() < 0x100)
            bytes[i] = static_cast<char>(text[i].unicode());
    return bytes;
}

// Asio's own knows neither mark (the bit is always 1) nor space (0).
struct Parity
{
    char letter;

    asio::error_code store(LineState &state, asio::error_code &error) const
    {
#ifdef Q_OS_WIN
        state.fParity = letter != 'N';
        state.Parity = static_cast<BYTE>(QByteArray("NOEMS").indexOf(letter));
#else
        constexpr tcflag_t all = PARENB | PARODD | CMSPAR;
        const bool isOdd = letter == 'O' || letter == 'M';
        const bool isConstant = letter == 'M' || letter == 'S';
        state.c_cflag &= ~all;
        if (letter != 'N')
            state.c_cflag |= PARENB | (isOdd ? PARODD : 0U) | (isConstant ? CMSPAR : 0U);
#endif
        return error = {};
    }
};

struct Sending
{
    QByteArray bytes;
    asio::error_code outcome;
    bool isDone = false;
};

} // namespace

struct SerialPort::Line
{
    asio::io_context context;
    asio::serial_port port{context};

    asio::error_code claim();
    asio::error_code apply(const LineSettings &settings);
    std::shared_ptr<Sending> send(const QByteArray &bytes, std::chrono::steady_clock::time_point deadline);
    bool drain(std::chrono::steady_clock::time_point deadline);
    void drop();
};

#ifdef Q_OS_WIN

// Windows gives a port to one program only.
asio::error_code SerialPort::Line::claim()
{
    return {};
}

// There a write ends when its bytes have left.
bool SerialPort::Line::drain(std::chrono::steady_clock::time_point)
{
    return true;
}

void SerialPort::Line::drop()
{
    PurgeComm(port.native_handle(), PURGE_TXABORT | PURGE_TXCLEAR);
}

#else

// The lock ends with the port: programs that are started meanwhile do not inherit it.
asio::error_code SerialPort::Line::claim()
{
    const int handle = port.native_handle();
    if (fcntl(handle, F_SETFD, FD_CLOEXEC) == 0 && flock(handle, LOCK_EX | LOCK_NB) == 0)
        return {};
    return {errno, asio::system_category()};
}

bool SerialPort::Line::drain(std::chrono::steady_clock::time_point deadline)
{
    int waiting = 0;
    while (ioctl(port.native_handle(), TIOCOUTQ, &waiting) == 0 && waiting > 0) {
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

// Closing would wait for them.
void SerialPort::Line::drop()
{
    tcflush(port.native_handle(), TCOFLUSH);
}

#endif

asio::error_code SerialPort::Line::apply(const LineSettings &settings)
{
    using asio::serial_port_base;
    asio::error_code error;
    // Elsewhere two stop bits are one and a half where the device wants it.
#ifdef Q_OS_WIN
    constexpr auto oneAndAHalf = serial_port_base::stop_bits::onepointfive;
#else
    constexpr auto oneAndAHalf = serial_port_base::stop_bits::two;
#endif
    auto stop = serial_port_base::stop_bits::two;
    if (settings.stopBits != u"2"_s)
        stop = settings.stopBits == u"1.5"_s ? oneAndAHalf : serial_port_base::stop_bits::one;
    if (!port.set_option(serial_port_base::baud_rate(settings.baud), error) &&
        !port.set_option(serial_port_base::character_size(settings.dataBits), error) &&
        !port.set_option(serial_port_base::stop_bits(stop), error) && !port.set_option(Parity{settings.parity}, error))
        port.set_option(serial_port_base::flow_control(serial_port_base::flow_control::none), error);
    return error;
}

// What is sent lives as long as the system may still look at it.
std::shared_ptr<Sending> SerialPort::Line::send(const QByteArray &bytes, std::chrono::steady_clock::time_point deadline)
{
    const auto sending = std::make_shared<Sending>(Sending{bytes, {}});
    const asio::const_buffer buffer(sending->bytes.constData(), static_cast<std::size_t>(bytes.size()));
    asio::async_write(port, buffer, [sending](const asio::error_code &error, std::size_t) {
        sending->outcome = error;
        sending->isDone = true;
    });
    context.restart();
    context.run_until(deadline);
    if (!sending->isDone) {
        asio::error_code ignored;
        port.cancel(ignored);
        context.restart();
        context.poll();
        sending->isDone = false;
    }
    return sending;
}

SerialError::SerialError(Number number, const QString &more)
    : std::runtime_error((wordsOf(number) + u", error "_s + QString::number(number) +
                          (more.isEmpty() ? QString() : u" ("_s + more + u')'))
                             .toStdString()),
      m_number(number)
{
}

SerialPort::SerialPort() : m_device(portName(1)) {}

SerialPort::~SerialPort() = default;

void SerialPort::CommPort(int number)
{
    constexpr int mostPorts = 16;
    if (number < 1 || number > mostPorts)
        throw SerialError(SerialError::InvalidPort, u"port "_s + QString::number(number));
    Device(portName(number));
}

void SerialPort::Device(const QString &path)
{
    if (PortOpen() && path != m_device)
        throw SerialError(SerialError::NotWhileOpen, m_device);
    m_device = path;
}

SerialPort::LineSettings SerialPort::lineSettings(const QString &text)
{
    static const QStringList bauds{u"110"_s,   u"300"_s,    u"600"_s,    u"1200"_s,  u"2400"_s,  u"4800"_s,
                                   u"9600"_s,  u"14400"_s,  u"19200"_s,  u"28800"_s, u"38400"_s, u"56000"_s,
                                   u"57600"_s, u"115200"_s, u"128000"_s, u"256000"_s};
    QStringList parts = text.toUpper().split(u',');
    for (QString &part : parts)
        part = part.trimmed();
    const bool isValid = parts.size() == 4 && bauds.contains(parts[0]) && parts[1].size() == 1 &&
                         u"EMNOS"_s.contains(parts[1]) && parts[2].size() == 1 && u"5678"_s.contains(parts[2]) &&
                         QStringList{u"1"_s, u"1.5"_s, u"2"_s}.contains(parts[3]);
    if (!isValid)
        throw SerialError(SerialError::InvalidValue, u'"' + text + u"\" is not like 9600,N,8,1"_s);
    return {parts[0].toUInt(), parts[1][0].toLatin1(), parts[2].toUInt(), parts[3]};
}

void SerialPort::Settings(const QString &text)
{
    const LineSettings settings = lineSettings(text);
    if (m_line)
        if (const asio::error_code error = m_line->apply(settings))
            throw SerialError(SerialError::InvalidValue, m_device + u": "_s + systemWords(error));
    m_settings = settings;
}

void SerialPort::InputLen(int length)
{
    if (length < 0)
        throw SerialError(SerialError::InvalidValue, QString::number(length));
}

void SerialPort::PortOpen(bool open)
{
    if (!open) {
        m_line.reset();
        return;
    }
    if (m_line)
        throw SerialError(SerialError::AlreadyOpen, m_device);
    try {
        auto line = std::make_unique<Line>();
        asio::error_code error;
        line->port.open(QFile::encodeName(m_device).toStdString(), error);
        if (error)
            throw SerialError(openingError(error), m_device + u": "_s + systemWords(error));
        if ((error = line->claim()))
            throw SerialError(openingError(error), m_device + u": "_s + systemWords(error));
        if ((error = line->apply(m_settings)))
            throw SerialError(SerialError::NotSet, m_device + u": "_s + systemWords(error));
        m_line = std::move(line);
    } catch (const std::system_error &error) { // Asio has no room for a port
        throw SerialError(SerialError::NotSet, QString::fromLocal8Bit(error.what()));
    }
}

void SerialPort::Output(const QString &text)
{
    if (!m_line)
        throw SerialError(SerialError::NotOpen);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    const auto sending = m_line->send(bytesOf(text), deadline);
    if (sending->isDone && sending->outcome)
        throw SerialError(SerialError::DeviceUnavailable, m_device + u": "_s + systemWords(sending->outcome));
    if (sending->isDone && m_line->drain(deadline))
        return;
    m_line->drop();
    throw SerialError(SerialError::Busy, m_device + u" takes no bytes"_s);
}
