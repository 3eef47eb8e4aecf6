#pragma once

#include <QString>

#include <memory>
#include <stdexcept>

/// What a serial port refuses, by the numbers that its operators know. what() says it, the number, the device and the
/// system's own words.
class SerialError : public std::runtime_error
{
public:
    enum Number {
        DeviceUnavailable = 68,
        InvalidValue = 380,
        NotWhileOpen = 8000,
        InvalidPort = 8002, ///< also: there is no such port
        AlreadyOpen = 8005, ///< also: another program holds it
        NotSet = 8015,      ///< it is there but does not take what a serial port takes
        NotOpen = 8018,
        Busy = 8019 ///< it takes no bytes
    };

    explicit SerialError(Number number, const QString &more = {});
    [[nodiscard]] Number number() const { return m_number; }

private:
    Number m_number;
};

/// A serial port with its properties. Only writing is of use here. Whatever the device does, nothing here waits for
/// longer than a second. Throws SerialError.
class SerialPort
{
public:
    SerialPort();
    ~SerialPort(); ///< closes it
    SerialPort(const SerialPort &) = delete;
    SerialPort &operator=(const SerialPort &) = delete;

    /// 1 (COM1) to 16; not while the port is open, unless it is the same.
    void CommPort(int number);
    /// The device's path instead of a number.
    void Device(const QString &path);
    /// Baud rate, parity (E, M, N, O, S), data bits (5 to 8) and stop bits (1, 1.5, 2), as 9600,N,8,1, which is what
    /// holds until it is set. Goes to an open port at once.
    void Settings(const QString &text);
    /// How much is read at a time; 0 is the whole buffer.
    void InputLen(int length);
    /// The port's own state, whatever other programs do with the device.
    [[nodiscard]] bool PortOpen() const { return m_line != nullptr; }
    void PortOpen(bool open);
    /// Writes one byte per character; returns when they have left. What has not left within a second is dropped.
    void Output(const QString &text);

private:
    struct Line;
    struct LineSettings
    {
        unsigned baud = 9600;
        char parity = 'N';
        unsigned dataBits = 8;
        QString stopBits = QStringLiteral("1");
    };
    static LineSettings lineSettings(const QString &text);

    QString m_device;
    LineSettings m_settings;
    std::unique_ptr<Line> m_line;
};
