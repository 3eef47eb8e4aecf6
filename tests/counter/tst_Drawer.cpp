#include "app/Station.h"
#include "counter/CashDrawer.h"
#include "support/DrawnRows.h"
#include "support/PseudoTerminal.h"
#include "support/ScriptedPrompts.h"

#include <QElapsedTimer>
#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Device = PseudoTerminal; // what hangs on a port

const QString tooMuch = QString(1 << 20, u'x'); // for a device that nobody reads

/// The number of what an action refuses; 0 when it is done.
template <typename Action>
int refusal(Action &&action)
{
    try {
        action();
    } catch (const SerialError &error) {
        return error.number();
    }
    return 0;
}

} // namespace

class tst_Drawer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyByteArrives()
    {
        const Device device;
        QByteArray bytes;
        QString text;
        for (int code = 0; code < 256; ++code) {
            bytes += char(code);
            text += QChar(code);
        }
        {
            SerialPort port;
            port.Device(device.path());
            port.Settings(u"19200,n,8,2"_s);
            port.PortOpen(true);
            port.Output(text);
            QCOMPARE(device.arrived(), bytes);
            port.Output({});
            port.Settings(u"9600,N,8,1.5"_s);
            port.Output(u"\u20AC\u02C6\u4E00"_s); // the last one is in no code page
        }                                         // closed right after
        QCOMPARE(device.arrived(), QByteArray("\x80\x88?"));
    }

    void settingsAreChecked_data()
    {
        drawnRows(uR"(
            small letters   | 9600,n,8,1   | 0
            blanks          | 9600, N, 8, 1 | 0
            all forms       | 110,E,7,2    | 0
            mark            | 256000,m,5,1.5 | 0
            space           | 115200,S,6,1 | 0
            a part less     | 9600,N,8     | 380
            a part more     | 9600,N,8,1,0 | 380
            baud            | 12345,N,8,1  | 380
            no baud         | x,N,8,1      | 380
            parity          | 9600,X,8,1   | 380
            parities        | 9600,EM,8,1  | 380
            no parity       | 9600,,8,1    | 380
            four bits       | 9600,N,4,1   | 380
            stop            | 9600,N,8,3   | 380
            empty           |              | 380
        )"_s);
    }

    void settingsAreChecked()
    {
        const auto [text, number] = cells<2>();
        SerialPort port;
        QCOMPARE(refusal([&] { port.Settings(text); }), number.toInt());
    }

    void refusesByNumber()
    {
        const Device device;
        QTemporaryFile plainFile;
        QVERIFY(plainFile.open());
        const auto opening = [](const QString &path) {
            return refusal([&] {
                SerialPort port;
                port.Device(path);
                port.PortOpen(true);
            });
        };
        QCOMPARE(opening(u"/dev/no such port"_s), 8002);
        QCOMPARE(opening(u"/dev/null"_s), 8015);
        QCOMPARE(opening(plainFile.fileName()), 8015);

        SerialPort port;
        for (const int number : {-1, 0, 17, 32767})
            QCOMPARE(refusal([&] { port.CommPort(number); }), 8002);
        QCOMPARE(refusal([&] { port.InputLen(-1); }), 380);
        QCOMPARE(refusal([&] { port.Output(u"x"_s); }), 8018);
        port.CommPort(16);
        port.Device(device.path());
        port.PortOpen(true);
        QVERIFY(port.PortOpen());
        QCOMPARE(refusal([&] { port.PortOpen(true); }), 8005);
        QCOMPARE(refusal([&] { port.CommPort(2); }), 8000);
        QCOMPARE(refusal([&] { port.Settings(u"9600,E,7,1"_s); }), 380); // which a pseudo-terminal does not take
        QCOMPARE(opening(device.path()), 8005);
        port.Output(u"x"_s);
        QCOMPARE(device.arrived(), "x");
        port.PortOpen(false);
        QVERIFY(!port.PortOpen());
        QCOMPARE(opening(device.path()), 0);
        try {
            port.Device(u"/dev/no such port"_s);
            port.PortOpen(true);
        } catch (const SerialError &error) {
            QCOMPARE(error.what(), "Invalid Port Number, error 8002 (/dev/no such port: No such file or directory)");
        }
    }

    void nobodyWaitsForASilentDevice()
    {
        const Device device;
        QElapsedTimer timer;
        SerialPort port;
        port.Device(device.path());
        port.PortOpen(true);
        timer.start();
        QCOMPARE(refusal([&] { port.Output(tooMuch); }), 8019);
        port.PortOpen(false);
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
        const QByteArray arrived = device.arrived();
        QVERIFY(arrived.size() < tooMuch.size());
        port.PortOpen(true);
        port.Output(u"again"_s);
        QCOMPARE(device.arrived(), "again");
    }

    void drawerOpens()
    {
        const Device device;
        Counter counter(device.path());
        {
            CashDrawer drawer(counter);
            drawer.openOnce();
            QCOMPARE(drawer.mark(), u"FirstDone"_s);
            drawer.openOnce();
            QCOMPARE(device.arrived(), "\x1Bp0");
            drawer.openAfterSale();
            counter.settings.drawerCommand = u"B"_s;
            drawer.openAfterSale();
            QCOMPARE(device.arrived(), "\x1Bp0B");
            CashDrawer other(counter);
            QCOMPARE(refusal([&] { other.openAfterSale(); }), 8005);
            QCOMPARE(other.mark(), QString());
        }
        CashDrawer next(counter);
        next.openAfterSale();
        QCOMPARE(next.mark(), u"FirstDone"_s);
        QCOMPARE(device.arrived(), "B");
        counter.settings.drawerText = u"fast"_s;
        QCOMPARE(refusal([&] { next.openAfterSale(); }), 380);
        QCOMPARE(device.arrived(), "");
    }

    void drawerIsNotThere()
    {
        const Device device;
        Counter counter(device.path(), {u"plain: Cannot found drawer"_s});
        counter.settings.drawerCommand = tooMuch;
        CashDrawer drawer(counter);
        QCOMPARE(refusal([&] { drawer.openAfterSale(); }), 8019);
        QCOMPARE(drawer.mark(), QString());
        drawer.openOnce(); // its port is open already
        QCOMPARE(drawer.mark(), QString());

        counter.settings.drawerDevice = u"none"_s;
        CashDrawer none(counter);
        none.openOnce();
        none.openAfterSale();
        counter.settings.drawerDevice.clear();
        counter.settings.drawerPort = 0;
        CashDrawer numbered(counter);
        QCOMPARE(refusal([&] { numbered.openOnce(); }), 8002);
    }

private:
    struct Counter : ScriptedPrompts, Station
    {
        explicit Counter(const QString &device, const QStringList &script = {})
            : ScriptedPrompts(script), Station({}, *this)
        {
            settings.drawerDevice = device;
            settings.drawerCommand = u"\u001Bp0"_s;
        }
    };
};

QTEST_GUILESS_MAIN(tst_Drawer)
#include "tst_Drawer.moc"
