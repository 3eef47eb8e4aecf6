#include "Program.h"
#include "app/Settings.h"
#include "app/frm_Login.h"
#include "options/frm_FirstRun.h"
#include "support/DrawnRows.h"
#include "support/PrivateServer.h"
#include "support/ScriptedPrompts.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// The guide, filled in by a person who answers as scripted.
struct Guide
{
    explicit Guide(const QStringList &script = {}) : person(script), window(person) { window.show(); }
    void enter(const QString &server, const QString &user, const QString &password)
    {
        box(u"txt_DatabaseServer"_s)->setText(server);
        box(u"txt_DatabaseUser"_s)->setText(user);
        box(u"txt_DatabasePassword"_s)->setText(password);
    }
    [[nodiscard]] QLineEdit *box(const QString &name) const { return window.findChild<QLineEdit *>(name); }
    [[nodiscard]] QSpinBox *figure(const QString &name) const { return window.findChild<QSpinBox *>(name); }
    void press(const QString &name) const { window.findChild<QPushButton *>(name)->click(); }
    [[nodiscard]] QString answer() const { return window.findChild<QLabel *>(u"lbl_Connection"_s)->text(); }

    ScriptedPrompts person;
    frm_FirstRun window;
};

const QString noAccount = u"refuse: Enter the database server and the account. [Set up this counter]"_s;

} // namespace

/// A counter that nobody has set up.
class tst_FirstRun : public QObject
{
    Q_OBJECT

    PrivateServer m_server;
    QTemporaryDir m_folder;

    void store(const QByteArray &bytes) const
    {
        QFile file(settingsFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        m_server.exec(u"CREATE USER setter@localhost IDENTIFIED BY 'right1'; GRANT ALL ON *.* TO setter@localhost; "
                      "CREATE USER nobody@localhost IDENTIFIED BY 'right1'"_s);
    }
    void init() { QFile::remove(settingsFilePath()); }

    void comesOnlyWhereNobodyHasEntered_data()
    {
        drawnRows(uR"(
            no file        | none                                       | guide
            left by a start | hour_start=StartOfWorkingHour;hour_end=EndOfWorkingHour;database_server=localhost | guide
            empty file     |                                            | no guide
            hours entered  | hour_start=8;hour_end=2;database_server=localhost | no guide
            wrong hours    | hour_start=eight;hour_end=EndOfWorkingHour;database_server=localhost | no guide
            an account     | hour_start=StartOfWorkingHour;hour_end=EndOfWorkingHour;database_server=localhost;database_user=a | no guide
            another server | hour_start=StartOfWorkingHour;hour_end=EndOfWorkingHour;database_server=db | no guide
        )"_s);
    }

    void comesOnlyWhereNobodyHasEntered()
    {
        const auto [keys, outcome] = cells<2>();
        if (keys != u"none")
            store("[System]\r\n" + keys.toUtf8().replace(';', "\r\n"));
        QCOMPARE(frm_FirstRun::isNeeded(), outcome == u"guide");
    }

    // What a start without a file leaves behind counts as nothing entered.
    void comesAgainAfterAStartWithoutIt()
    {
        QVERIFY(frm_FirstRun::isNeeded());
        QVERIFY_EXCEPTION_THROWN(
            {
                AppSettings settings = loadStartupValues();
                LoadSettings(settings);
            },
            SettingError);
        QVERIFY(QFile::exists(settingsFilePath()));
        QVERIFY(frm_FirstRun::isNeeded());
    }

    void saysWhatIsWrong_data()
    {
        // Server ("socket" is the test's own), account, password, what was done to the database, what is said.
        drawnRows(uR"(
            no such host   | no-such-host.invalid | setter  | right1 |                     | No computer named "no-such-host.invalid"
            no server      | 127.0.0.254          | setter  | right1 |                     | Nobody answers as a database server
            no socket      | /nowhere/socket      | setter  | right1 |                     | Nobody answers as a database server
            wrong password | socket               | setter  | wrong1 |                     | does not take this account
            no password    | socket               | setter  |        |                     | does not take this account
            no such account | socket              | who     | right1 |                     | does not take this account
            no posdb       | socket               | setter  | right1 | DROP DATABASE posdb | no database posdb. Run database/install
            no rights      | socket               | nobody  | right1 |                     | may not use posdb, or there is none. Run database/install
            no tables      | socket               | setter  | right1 | DROP DATABASE posdb; CREATE DATABASE posdb | lacks 15 of its tables. Run database/install
            a table less   | socket               | setter  | right1 | DROP TABLE posdb.tbl_light | lacks the table tbl_light. Run database/install
            all is well    | socket               | setter  | right1 |                     | The connection works, and posdb has its tables.
            semicolon      | socket               | setter  | ri;ght |                     | cannot have a semicolon in it
        )"_s);
    }

    void saysWhatIsWrong()
    {
        const auto [server, user, password, deed, words] = cells<5>();
        m_server.freshDatabase();
        if (!deed.isEmpty())
            m_server.exec(deed);
        Guide guide;
        guide.enter(server == u"socket" ? m_server.socketPath() : server, user, password);
        guide.press(u"btn_TryConnection"_s);
        QVERIFY2(guide.answer().contains(words), qPrintable(guide.answer()));
        QVERIFY(!guide.answer().contains(u"right1"_s));
        QVERIFY(!QFile::exists(settingsFilePath()));
        m_server.freshDatabase();
    }

    void writesAFileThatTheStartAccepts()
    {
        Guide guide({noAccount,
                     u"refuse: The last hour after midnight must be before the first hour, when the next day begins. "
                     "[Set up this counter]"_s,
                     u"refuse: The number of this counter is above the number of counters. [Set up this counter]"_s});
        guide.press(u"cmd_OK"_s);
        guide.enter(m_server.socketPath(), u"setter"_s, u"right1"_s);
        guide.figure(u"spn_FirstHour"_s)->setValue(7);
        guide.figure(u"spn_LastHour"_s)->setValue(9);
        guide.press(u"cmd_OK"_s);
        guide.figure(u"spn_LastHour"_s)->setValue(1);
        guide.figure(u"spn_ThisCounter"_s)->setValue(2);
        guide.press(u"cmd_OK"_s);
        QVERIFY(!QFile::exists(settingsFilePath()));
        guide.figure(u"spn_Counters"_s)->setValue(3);
        QTest::keyClick(guide.box(u"txt_DatabaseServer"_s), Qt::Key_Return); // neither saves nor closes
        QVERIFY(guide.window.isVisible());
        guide.press(u"cmd_OK"_s);
        QCOMPARE(guide.window.result(), int(QDialog::Accepted));
        AppSettings settings = loadStartupValues();
        LoadSettings(settings);
        QCOMPARE(settings.databaseServer + settings.databaseUser + settings.databasePassword,
                 m_server.socketPath() + u"setterright1"_s);
        QCOMPARE((std::vector<int>{settings.firstHour, settings.lastHour, settings.ThisCounter, settings.CounterCount}),
                 (std::vector<int>{7, 1, 2, 3}));
        QCOMPARE(QFile::permissions(settingsFilePath()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        QVERIFY(!frm_FirstRun::isNeeded());
    }

    void comesBeforeTheLogin()
    {
        const auto atGuide = [](auto act) {
            QTimer::singleShot(0, [act] {
                auto *guide = qobject_cast<frm_FirstRun *>(QApplication::activeModalWidget());
                QVERIFY(guide);
                act(guide);
            });
        };
        Program left;
        atGuide([](frm_FirstRun *guide) { guide->close(); });
        QVERIFY(!left.start() && !left.loginWindow());
        QVERIFY(!QFile::exists(settingsFilePath()));
        Program program;
        atGuide([this](frm_FirstRun *guide) {
            guide->findChild<QLineEdit *>(u"txt_DatabaseServer"_s)->setText(m_server.socketPath());
            guide->findChild<QLineEdit *>(u"txt_DatabaseUser"_s)->setText(u"setter"_s);
            guide->findChild<QLineEdit *>(u"txt_DatabasePassword"_s)->setText(u"right1"_s);
            guide->findChild<QPushButton *>(u"cmd_OK"_s)->click();
        });
        QVERIFY(program.start());
        QVERIFY(program.loginWindow()->isVisible());
        QCOMPARE(program.station()->settings.databaseUser, u"setter"_s);
        Program again; // without the guide
        QVERIFY(again.start());
    }

    void asksBeforeItWritesWhatDoesNotWork()
    {
        const QString question =
            u"confirm: Nobody answers as a database server at \"/nowhere\". Is it switched on, does the server run, "
            u"and "
            "does its firewall let this computer through?\n\nWrite the settings all the same? The program cannot start "
            "with them before this is mended. [Set up this counter] -> "_s;
        Guide guide({question + u"no"_s, question + u"yes"_s});
        guide.enter(u"/nowhere"_s, u"setter"_s, u"right1"_s);
        guide.press(u"cmd_OK"_s);
        QVERIFY(guide.window.isVisible() && !QFile::exists(settingsFilePath()));
        guide.press(u"cmd_OK"_s);
        QVERIFY(!guide.window.isVisible() && !frm_FirstRun::isNeeded());
    }
};

QTEST_MAIN(tst_FirstRun)
#include "tst_FirstRun.moc"
