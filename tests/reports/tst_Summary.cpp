#include "app/Station.h"
#include "reports/PageFetch.h"
#include "reports/frm_Summary.h"
#include "support/DrawnRows.h"
#include "support/ScriptedPrompts.h"

#include <QApplication>
#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Counter : ScriptedPrompts, Station
{
    explicit Counter(const QStringList &script = {}) : ScriptedPrompts(script), Station({}, *this) {}
};

/// A web server that gives every visitor the same answer; an empty one is silence. It runs in a thread of its own.
class SamePage
{
public:
    explicit SamePage(const QByteArray &answer)
    {
        m_server.moveToThread(&m_thread);
        m_thread.start();
        QMetaObject::invokeMethod(
            &m_server,
            [this, answer] {
                m_server.listen(QHostAddress::LocalHost);
                QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this, answer] {
                    QTcpSocket *visitor = m_server.nextPendingConnection();
                    QObject::connect(visitor, &QTcpSocket::readyRead, &m_server, [this, visitor, answer] {
                        m_asked += visitor->readAll();
                        visitor->write(answer);
                        if (!answer.isEmpty())
                            visitor->disconnectFromHost();
                    });
                });
            },
            Qt::BlockingQueuedConnection);
    }
    ~SamePage()
    {
        QMetaObject::invokeMethod(
            &m_server,
            [this] {
                m_server.close();
                m_server.moveToThread(qApp->thread());
            },
            Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
    SamePage(const SamePage &) = delete;
    SamePage &operator=(const SamePage &) = delete;

    [[nodiscard]] QString host() const { return u"127.0.0.1:%1"_s.arg(m_server.serverPort()); }
    [[nodiscard]] QByteArray asked()
    {
        QByteArray all;
        QMetaObject::invokeMethod(
            &m_server, [&] { all = m_asked; }, Qt::BlockingQueuedConnection);
        return all;
    }

private:
    QTcpServer m_server;
    QThread m_thread;
    QByteArray m_asked;
};

/// A browser without pages: it is told where it has come to.
class ToldBrowser : public BrowserView
{
public:
    explicit ToldBrowser(QWidget *parent) : m_widget(new QWidget(parent)) {}
    QWidget *widget() override { return m_widget; }
    void load(const QUrl &address, std::function<void(bool)> ended) override
    {
        m_ended = std::move(ended);
        loads << address.toString();
        follow(address.toString(), true);
    }
    [[nodiscard]] QUrl address() const override { return m_address; }
    [[nodiscard]] QString title() const override { return u"Title of "_s + m_address.query(); }
    void print(QPrinter & /*printer*/, std::function<void(bool)> /*done*/) override {}

    void follow(const QString &address, bool came)
    {
        m_address = QUrl(address);
        m_ended(came);
    }
    QStringList loads;

private:
    QWidget *m_widget;
    QUrl m_address;
    std::function<void(bool)> m_ended;
};

struct WindowWithBrowser : frm_Summary
{
    using frm_Summary::frm_Summary;
    std::unique_ptr<BrowserView> makeBrowser() override
    {
        auto made = std::make_unique<ToldBrowser>(this);
        browser = made.get();
        return made;
    }
    ToldBrowser *browser = nullptr;
};

QPushButton *button(const QWidget &window, const char *name)
{
    return window.findChild<QPushButton *>(QString::fromLatin1(name));
}

} // namespace

/// The window of a report where there is no embedded browser, and the pages that it fetches to be mailed.
class tst_Summary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDesktopServices::setUrlHandler(u"http"_s, this, "openOutside"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"http"_s); }
    void init() { m_opened.clear(); }

    void fallsBackOnTheSystem()
    {
        Counter counter;
        counter.settings.webServer = u"reports.centre:8088"_s;
        frm_Summary window(counter, u"2026-11-14"_s);
        window.show();
        QTRY_COMPARE(m_opened, QStringList{u"http://reports.centre:8088/report/booking.asp?date=2026-11-14"_s});
        QCOMPARE(window.windowTitle(), u"Booking Summary for 2026-11-14"_s);
        QVERIFY(window.findChild<QLabel *>(u"lbl_Note"_s)->text().contains(u"system's browser"_s));
        QVERIFY(!button(window, "btn_Print")->isEnabled());
        QVERIFY(button(window, "btn_Retry")->isVisible());
        button(window, "btn_Retry")->click();
        QCOMPARE(m_opened.size(), 2);
        button(window, "btn_Close")->click();
        QVERIFY(!window.isVisible());
    }

    void mailsWhatTheServerSays()
    {
        SamePage server("HTTP/1.0 200 OK\r\nContent-Length: 12\r\n\r\n<p>caf\xC3\xA9</p>");
        Counter counter;
        frm_Summary window(counter, u"Counter 1"_s, QUrl(u"http://"_s + server.host() + u"/report/x?counter=1"_s));
        QSignalSpy mails(&window, &frm_Summary::mailWanted);
        button(window, "btn_Mail")->click();
        QVERIFY(!button(window, "btn_Mail")->isEnabled());
        QVERIFY(mails.wait());
        QCOMPARE(mails.first().at(0).toByteArray(), QByteArray("<p>caf\xC3\xA9</p>"));
        QCOMPARE(mails.first().at(1).toString(), u"Counter 1"_s);
        QVERIFY(server.asked().startsWith("GET /report/x?counter=1 HTTP/1.0\r\nHost: " + server.host().toUtf8()));
        QVERIFY(button(window, "btn_Mail")->isEnabled());
    }

    // Links lead on from the page that was asked for first.
    void keepsToTheShownPage()
    {
        SamePage server("HTTP/1.0 200 OK\r\n\r\nweek");
        Counter counter;
        counter.settings.webServer = server.host();
        const QString first = u"http://%1/report/booking.asp?date=2026-11-14"_s.arg(server.host());
        const QString week = first + u"&period=week"_s;
        WindowWithBrowser window(counter, u"2026-11-14"_s);
        window.show();
        QTRY_VERIFY(window.browser);
        QCOMPARE(window.windowTitle(), u"Booking Summary for 2026-11-14"_s);
        window.browser->follow(week, true);
        const QString title = window.windowTitle();
        QCOMPARE(title, u"Title of date=2026-11-14&period=week"_s);
        QSignalSpy mails(&window, &frm_Summary::mailWanted);
        button(window, "btn_Mail")->click();
        window.browser->follow(first, true);
        QCOMPARE(window.windowTitle(), u"Booking Summary for 2026-11-14"_s);
        QVERIFY(mails.wait());
        QCOMPARE(mails.first().at(1).toString(), title);
        QVERIFY(server.asked().contains("date=2026-11-14&period=week HTTP"));
        window.browser->follow(week, false);
        button(window, "btn_Retry")->click();
        QCOMPARE(window.browser->loads, (QStringList{first, week}));
        QVERIFY(!button(window, "btn_Retry")->isVisible());
    }

    void tellsWhenThereIsNothingToMail()
    {
        Counter counter({u"refuse: The report server at 127.0.0.1:1 cannot be asked: Connection refused."_s});
        frm_Summary window(counter, u"Any"_s, QUrl(u"http://127.0.0.1:1/"_s));
        QSignalSpy mails(&window, &frm_Summary::mailWanted);
        button(window, "btn_Mail")->click();
        QTRY_VERIFY(button(window, "btn_Mail")->isEnabled());
        QCOMPARE(mails.size(), 0);
    }

    // A page is fetched whole or not at all.
    void failures_data()
    {
        drawnRows(uR"(
            silence    |                                                    | no answer came in time
            cut off    | HTTP/1.0 200 OK~Content-Length: 100~~half          | the answer was cut off
            away       | HTTP/1.1 503 Service Unavailable~~sorry            | the report server answered 503 Service Unavailable
            other talk | 220 mail.example ESMTP                             | the answer is no web page
        )"_s);
    }

    void failures()
    {
        auto [answer, wanted] = cells<2>();
        SamePage server(answer.replace(u"~"_s, u"\r\n"_s).toUtf8());
        const FetchedPage page = fetchPage(u"http://"_s + server.host() + u"/"_s, 500ms);
        QCOMPARE(std::get<FetchFailure>(page).words,
                 u"The report server at %1 cannot be asked: %2."_s.arg(server.host(), wanted));
    }

    void refusesOtherAddresses()
    {
        for (const QString &address : {u"https://centre/"_s, u"file:///etc/passwd"_s, u"http://"_s, u"http://a/b c"_s,
                                       u"http://a/\r\nHost: b"_s})
            QVERIFY(std::holds_alternative<FetchFailure>(fetchPage(address, 1s)));
    }

public Q_SLOTS:
    void openOutside(const QUrl &address) { m_opened << address.toString(); }

private:
    QStringList m_opened;
};

QTEST_MAIN(tst_Summary)
#include "tst_Summary.moc"
