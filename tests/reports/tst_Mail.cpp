#include "app/Errors.h"
#include "reports/MailSender.h"
#include "reports/frm_Mail.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString recipient = u"tom@example.org"_s;

/// tests/reports/mail_server.py, gone at the end.
class MailServer
{
public:
    explicit MailServer(const QString &mode, const QStringList &files = {})
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(u"/usr/bin/python3"_s,
                        QStringList{QStringLiteral(TAMSORA_TESTS "/reports/mail_server.py"), m_folder.path(), mode} +
                            files);
        while (!m_process.canReadLine())
            if (!m_process.waitForReadyRead())
                throw std::runtime_error("the mail server did not start");
        settings.server = u"localhost"_s;
        settings.from = u"counter@example.org"_s;
        settings.security = MailSettings::Security::None;
        settings.port = m_process.readLine().trimmed().toInt();
    }
    ~MailServer()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    MailServer(const MailServer &) = delete;
    MailServer &operator=(const MailServer &) = delete;

    /// "recipients", "subject", "text" or an attached file, as "0 name", of a mail.
    [[nodiscard]] QByteArray read(const QString &name, int mail = 1) const
    {
        QFile file(m_folder.filePath(QString::number(mail) + u'/' + name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "(none)";
    }
    [[nodiscard]] int mails() const
    {
        return int(QDir(m_folder.path()).entryList(QDir::AllDirs | QDir::NoDotAndDotDot).size());
    }

    /// Writes them where the window looks for them.
    void enterSettings() const
    {
        const QString values =
            u"server=%1|port=%2|security=none|from=%3"_s.arg(settings.server).arg(settings.port).arg(settings.from);
        for (const QString &line : values.split(u'|'))
            WriteSetting(u"Mail"_s, line.section(u'=', 0, 0), line.section(u'=', 1));
    }

    MailSettings settings;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

/// "sent", or the words of the failure.
QString outcomeOf(const MailSettings &settings, const MailMessage &message)
{
    MailSender sender;
    QString outcome;
    QObject::connect(&sender, &MailSender::sent, &sender, [&] { outcome = u"sent"_s; });
    QObject::connect(&sender, &MailSender::failed, &sender, [&](const QString &words) { outcome = words; });
    MailMessage whole = message;
    whole.from = settings.from;
    sender.send(settings, message.to, mailText(whole, QDateTime::currentDateTime()));
    const bool ended = QTest::qWaitFor([&] { return !outcome.isEmpty(); }, 30'000);
    return ended ? outcome : u"no end"_s;
}

QByteArray everyByte(int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes += char(i * 7 + i / 256);
    return bytes;
}

template <typename Control>
Control *control(const QWidget &window, const QString &name)
{
    auto *found = window.findChild<Control *>(name);
    if (!found)
        throw std::invalid_argument("no control " + name.toStdString());
    return found;
}

void press(const QWidget &window, const QString &name)
{
    QTest::mouseClick(control<QPushButton>(window, name), Qt::LeftButton);
}

} // namespace

/// Mails go out whole through a real server, and what goes wrong is said.
class tst_Mail : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::addLibraryPath(TAMSORA_PLUGINS); }
    void init() { qputenv("XDG_CONFIG_HOME", m_config.path().toUtf8()); }
    void cleanup() { QFile::remove(settingsFilePath()); }

    void addresses_data()
    {
        drawnRows(uR"(
            one          | tom@example.org                     | tom@example.org
            several      | a@b.de, Tom Karlsen <t.k+x@c.d> ;e@f | a@b.de t.k+x@c.d e@f
            twice        | a@b.de, a@b.de,                     | a@b.de
            none         | ,                                   | Enter whom the mail goes to.
            no place     | tom                                 | “tom” is no mail address.
            two in one   | a@b.de c@d.de                       | “a@b.de c@d.de” is no mail address.
            a command    | a@b.de>\rRCPT TO:<c@d.de            | “a@b.de>\rRCPT TO:<c@d.de” is no mail address.
            letters      | jörg@b.de                           | “jörg@b.de” is no mail address.
        )"_s);
    }
    void addresses()
    {
        auto [typed, wanted] = cells<2>();
        QString found;
        try {
            found = mailAddresses(typed.replace(u"\\r"_s, u"\r"_s)).join(u' ');
        } catch (const NotDone &reason) {
            found = QString::fromUtf8(reason.what()).replace(u'\r', u"\\r"_s);
        }
        QCOMPARE(found, wanted);
    }

    void headersCannotBeAdded()
    {
        const QDateTime now = QDateTime::currentDateTime();
        for (const MailMessage &bad : {MailMessage{u"a@b.de\r\nBcc: c@d.de"_s, {recipient}, u"x"_s, {}, {}},
                                       MailMessage{u"a@b.de"_s, {recipient}, u"x\nBcc: c@d.de"_s, {}, {}},
                                       MailMessage{u"a@b.de"_s, {recipient + u"\rBcc: c@d.de"_s}, u"x"_s, {}, {}}})
            QVERIFY_THROWS_EXCEPTION(NotDone, mailText(bad, now));
        const QByteArray text =
            mailText({u"a@b.de"_s, {recipient}, u"x"_s, {}, {{u"a\"\r\nX: y/../b\r\nc"_s, {}}}}, now);
        QVERIFY(text.contains("begin 644 b__c\r\n"));
        QVERIFY(!text.contains("\r\nX:"));
    }

    void arrivesWhole()
    {
        const MailServer server(u"plain"_s);
        MailMessage mail{
            {},
            {recipient, u"eva@example.org"_s},
            u"Übersicht für Samstag, 14. November – Plätze, Kasse 😀 und noch viel mehr, was nicht in eine Zeile passt"_s,
            u".\n..dots\nblanks at the end  \n=3D is no sign\nGrüße aus Łódź 😀\n"_s + QString(300, u'ü') +
                u"\nFrom here"_s,
            {}};
        // Lines of 14 bytes begin with a dot, too.
        for (int size = 0; size < 100; ++size)
            mail.attachments.push_back({u"file%1.bin"_s.arg(size), everyByte(size)});
        mail.attachments.push_back({u"Übersicht 1.html"_s, everyByte(1'000'001)});
        mail.attachments.push_back({u"zeros"_s, QByteArray(1000, '\0')});
        mail.attachments.push_back({u"dots.txt"_s, QByteArray(1000, '.') + "\r\n.\r\nQUIT\r\n"});
        QCOMPARE(outcomeOf(server.settings, mail), u"sent"_s);
        QCOMPARE(server.mails(), 1);
        QCOMPARE(server.read(u"recipients"_s), "tom@example.org eva@example.org");
        QCOMPARE(server.read(u"headers"_s), "counter@example.org|tom@example.org, eva@example.org|True|[]");
        QCOMPARE(QString::fromUtf8(server.read(u"subject"_s)), mail.subject);
        QCOMPARE(QString::fromUtf8(server.read(u"text"_s)).remove(u'\r'), mail.text + u'\n');
        QVERIFY(server.read(u"lines"_s).toInt() <= 80);
        int number = 0;
        for (const MailAttachment &each : mail.attachments)
            QCOMPARE(server.read(u"%1 %2"_s.arg(number++).arg(each.name)).toBase64(), each.bytes.toBase64());
        QCOMPARE(outcomeOf(server.settings, {{}, {recipient}, {}, {}, {}}), u"sent"_s);
        QCOMPARE(server.read(u"text"_s, 2), "\r\n");
    }

    void failures_data()
    {
        // Server, what differs in the settings, and what is said; * is whatever follows.
        drawnRows(uR"(
            recipient     | plain  | to=nobody@example.org    | The mail server localhost refused a recipient; the mail was sent to nobody.\nThe server says: 550 Nobody of that name here
            the mail      | plain  | from=refused@example.org | The mail server localhost did not take the mail.\nThe server says: 554 I do not like this mail
            no login      | login  |                          | The mail server localhost refused the sender counter@example.org.\nThe server says: 530 *
            wrong login   | login  | user=anna password=wrong | The mail server localhost refused the login of anna.\nThe server says: 535 *
            right login   | login  | user=anna password=secret | sent
            no server     | plain  | server=nowhere.invalid   | The mail server nowhere.invalid was not found.*
            away          | plain  | port=1                   | The mail server localhost does not answer.*
            silent        | silent |                          | The mail server localhost did not answer in time.*
            no encryption | plain  | security=starttls        | The mail server localhost offers no encryption.*
            not even TLS  | plain  | security=tls             | No encrypted connection to the mail server localhost.*
        )"_s);
    }
    void failures()
    {
        auto [mode, differences, wanted] = cells<3>();
        MailServer server(mode);
        server.settings.seconds = mode == u"silent"_s ? 2 : 20;
        MailMessage mail{{}, {recipient, u"eva@example.org"_s}, u"Subject"_s, u"Text"_s, {}};
        for (const QString &difference : differences.split(u' ', Qt::SkipEmptyParts)) {
            const QString value = difference.section(u'=', 1);
            if (difference.startsWith(u"to="_s))
                mail.to << value;
            WriteSetting(u"Mail"_s, difference.section(u'=', 0, 0), value);
        }
        server.settings = withDifferences(server.settings);
        const QString outcome = outcomeOf(server.settings, mail);
        wanted.replace(u"\\n"_s, u"\n"_s);
        QVERIFY2(wanted.endsWith(u'*') ? outcome.startsWith(wanted.chopped(1)) : outcome == wanted,
                 qPrintable(outcome));
        QCOMPARE(server.mails(), outcome == u"sent"_s ? 1 : 0);
    }

    void certificates()
    {
        const QTemporaryDir folder;
        const QString certificate = folder.filePath(u"certificate.pem"_s);
        const QString key = folder.filePath(u"key.pem"_s);
        QCOMPARE(QProcess::execute(u"openssl"_s,
                                   {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                                    u"-subj"_s, u"/CN=localhost"_s, u"-addext"_s, u"subjectAltName=DNS:localhost"_s,
                                    u"-keyout"_s, key, u"-out"_s, certificate}),
                 0);
        const MailServer server(u"tls"_s, {certificate, key});
        MailSettings settings = server.settings;
        const MailMessage mail{{}, {recipient}, u"Subject"_s, u"Text"_s, {}};
        QVERIFY(outcomeOf(settings, mail).contains(u"530"_s)); // the server insists
        settings.security = MailSettings::Security::StartTls;
        QVERIFY(
            outcomeOf(settings, mail).startsWith(u"The mail server localhost shows a certificate that nobody known"_s));
        settings.authorities = certificate;
        QCOMPARE(outcomeOf(settings, mail), u"sent"_s);
        settings.server = u"127.0.0.1"_s; // another name than the certificate's
        QVERIFY(outcomeOf(settings, mail).startsWith(u"The mail server 127.0.0.1 shows a certificate"_s));
        QCOMPARE(server.mails(), 1);
    }

    void window()
    {
        m_server.freshDatabase();
        TestStation station(m_server,
                            {u"inform: No mail can be sent yet: an administrator enters the mail server under "
                             "Options, “This counter”."_s});
        station.CurrentStaff = u"anna"_s;
        frm_Mail window(station, u"Day's report"_s, u"See below."_s, {{u"report.html"_s, "<p>1</p>"}});
        window.show();
        QVERIFY(!control<QLabel>(window, u"lbl_MailError"_s)->text().isEmpty());
        control<QLineEdit>(window, u"txt_MailTo"_s)->setText(u"nobody@example.org, O'Neil <oneil@example.org>"_s);
        press(window, u"btn_Send"_s);

        const MailServer server(u"plain"_s);
        server.enterSettings();
        press(window, u"btn_Send"_s);
        QVERIFY(!control<QLineEdit>(window, u"txt_MailTo"_s)->isEnabled());
        QTRY_VERIFY(control<QLabel>(window, u"lbl_MailError"_s)->text().contains(u"550 Nobody of that name here"_s));
        station.person.expect({u"confirm: The mail was not sent. Close and lose it? [Mail] -> no"_s});
        press(window, u"btn_Close"_s);
        QVERIFY(window.isVisible());
        QCOMPARE(control<QPlainTextEdit>(window, u"txt_MailText"_s)->toPlainText(), u"See below."_s);

        QFile extra(m_config.filePath(u"extra.bin"_s));
        QVERIFY(extra.open(QIODevice::WriteOnly) && extra.write(everyByte(500)) == 500);
        extra.close();
        window.attach(extra.fileName());
        station.person.expect(
            {u"refuse: none.bin cannot be read: No such file or directory"_s, u"inform: The mail was sent."_s});
        window.attach(m_config.filePath(u"none.bin"_s));
        control<QLineEdit>(window, u"txt_MailTo"_s)->setText(u"O'Neil <oneil@example.org>"_s);
        control<QLineEdit>(window, u"txt_MailSubject"_s)->setText(u"It's C:\\"_s);
        press(window, u"btn_Send"_s);
        QTRY_VERIFY(!window.isVisible());
        QCOMPARE(window.result(), int(QDialog::Accepted));
        QCOMPARE(server.read(u"0 report.html"_s), "<p>1</p>");
        QCOMPARE(server.read(u"1 extra.bin"_s), everyByte(500));
        QCOMPARE(m_server.rows(u"SELECT log_counter, log_staffname, log_do FROM tbl_log"_s),
                 QStringList{u"1|anna|mail sent to oneil@example.org: It's C:/"_s});
    }

    void windowStaysAlive()
    {
        const MailServer server(u"silent"_s);
        server.enterSettings();
        TestStation station(m_server, {u"confirm: The mail is still being sent. Stop that and close? [Mail] -> yes"_s});
        frm_Mail window(station);
        window.show();
        control<QLineEdit>(window, u"txt_MailTo"_s)->setText(recipient);
        press(window, u"btn_Send"_s);
        qint64 longest = 0;
        QElapsedTimer since;
        since.start();
        QTimer pulse;
        connect(&pulse, &QTimer::timeout, &pulse, [&] { longest = std::max(longest, since.restart()); });
        pulse.start(10);
        QTest::qWait(500); // the server says nothing: only time can show that the window does not wait for it
        QVERIFY2(longest < 250, QByteArray::number(longest));
        since.restart();
        pulse.stop();
        press(window, u"btn_Cancel"_s);
        QVERIFY(control<QLabel>(window, u"lbl_MailError"_s)->text().contains(u"was not sent"_s));
        QCOMPARE(control<QLineEdit>(window, u"txt_MailTo"_s)->text(), recipient);
        press(window, u"btn_Send"_s);
        press(window, u"btn_Close"_s);
        QVERIFY(!window.isVisible());
        QVERIFY2(since.elapsed() < 1000, "nobody waits for the server's farewell");
    }

private:
    /// What the settings file says instead.
    static MailSettings withDifferences(MailSettings settings)
    {
        const MailSettings read = readMailSettings();
        const auto said = [](const QString &key) { return !ReadSetting(u"Mail"_s, key, {}).isEmpty(); };
        if (said(u"server"_s))
            settings.server = read.server;
        if (said(u"port"_s))
            settings.port = read.port;
        if (said(u"security"_s))
            settings.security = read.security;
        if (said(u"from"_s))
            settings.from = read.from;
        settings.user = read.user;
        settings.password = read.password;
        return settings;
    }

    QTemporaryDir m_config;
    PrivateServer m_server;
};

QTEST_MAIN(tst_Mail)
#include "tst_Mail.moc"
