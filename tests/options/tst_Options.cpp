#include "app/Errors.h"
#include "app/SharedFields.h"
#include "counter/PrinterDesk.h"
#include "options/OptionsPages.h"
#include "options/PlanEditor.h"
#include "options/PlanPart.h"
#include "options/SettingsDraft.h"
#include "options/frm_Options.h"
#include "options/page_Centre.h"
#include "support/DrawnRows.h"
#include "support/PseudoTerminal.h"
#include "support/TestStation.h"

#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray sampleFile = "; of the tests\r\n[System]\r\nfields=4\r\ncounter=1\r\ncounters=3\r\nhour_start=8\r\n"
                              "hour_end=1\r\ndatabase_server=db1\r\ndatabase_user=tamsora\r\n"
                              "database_password=old1\r\ncashdrawercommand=\x1Bp0\r\ncashdrawerdevice=none\r\n"
                              "pitch0=N\r\npitch1=A\r\npitch2=B\r\npitch3=C\r\ndisplay0=North pitch\r\n"
                              "display1=North A\r\ndisplay2=North B\r\ndisplay3=Court\r\n"
                              "[Shared]\r\nShared0=0&1\r\n[HotSpot]\r\nCoord0=10, 20, 110, 70\r\n"
                              "[Address]\r\naddress1=Larkmere\r\naddress2=Heron Walk\r\n";

class NotingDesk : public PrinterDesk
{
public:
    void lookForPrinters(std::function<void(std::optional<bool>)> told) override { told(printers); }
    std::optional<PrinterChoice> choose(QWidget * /*over*/) override { return PrinterChoice{u"Slip"_s, Paper::Roll58}; }
    void print(const Receipt &receipt, const PrinterChoice &choice, std::function<void(QString trouble)> told) override
    {
        printed << receipt.title + u" on "_s + choice.name +
                       (choice.paper ? u' ' + paperName(*choice.paper) : QString());
        told(trouble);
    }
    QString askForFile(QWidget * /*over*/, const QString & /*suggestion*/) override { return {}; }

    std::optional<bool> printers = true;
    QString trouble;
    QStringList printed;
};

QByteArray stored()
{
    QFile file(settingsFilePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

AppSettings started(const QString &file = u"tamsora.ini"_s)
{
    AppSettings settings = loadStartupValues(file);
    LoadSettings(settings, file);
    const SharedFields pairs(settings);
    return settings;
}

/// The options as an administrator has opened them, on one of its pages.
struct Options
{
    Options(const PrivateServer &server, int page, const QStringList &script = {})
        : station(server, script), window(station)
    {
        addOptionsPages(window, station, u"boss"_s, desk);
        window.show();
        QCoreApplication::processEvents();
        window.showPage(page);
    }
    template <typename Control>
    [[nodiscard]] Control *part(const QString &name) const
    {
        auto *found = window.findChild<Control *>(name);
        if (!found)
            throw std::invalid_argument("no " + name.toStdString());
        return found;
    }
    void press(const QString &name) const { part<QPushButton>(name)->click(); }
    void enter(const QString &name, const QString &value) const
    {
        if (auto *box = window.findChild<QLineEdit *>(name); box && name.startsWith(u"txt_"))
            box->setText(value);
        else if (auto *lines = window.findChild<QPlainTextEdit *>(name))
            lines->setPlainText(QString(value).replace(u'/', u'\n'));
        else if (auto *figure = window.findChild<QSpinBox *>(name))
            figure->setValue(value.toInt());
        else
            part<QComboBox>(name)->setCurrentIndex(value.toInt());
    }
    void nameField(int row, int column, const QString &name) const
    {
        part<QTableWidget>(u"ListView_Fields"_s)->item(row, column)->setText(name);
    }
    [[nodiscard]] bool canSave() const { return part<QPushButton>(u"btn_Save"_s)->isEnabled(); }
    [[nodiscard]] bool wantsRestart() const { return part<QLabel>(u"lbl_Restart"_s)->isVisible(); }
    [[nodiscard]] QString said(const QString &label) const { return part<QLabel>(label)->text(); }

    NotingDesk desk;
    TestStation station;
    frm_Options window;
};

void drag(PlanEditor *editor, QPointF from, QPointF to)
{
    const auto at = [editor](QPointF point) { return editor->fromPicture(point).toPoint(); };
    QTest::mousePress(editor, Qt::LeftButton, {}, at(from));
    QTest::mouseMove(editor, at((from + to) / 2));
    QTest::mouseMove(editor, at(to));
    QTest::mouseRelease(editor, Qt::LeftButton, {}, at(to));
}

} // namespace

class tst_Options : public QObject
{
    Q_OBJECT

    PrivateServer m_server;
    QTemporaryDir m_folder;

    [[nodiscard]] QStringList logged() const
    {
        return m_server.rows(u"SELECT CONCAT(log_staffname, ' ', log_do) FROM posdb.tbl_log ORDER BY log_id"_s);
    }

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        QFile file(settingsFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(sampleFile);
        m_server.exec(u"DELETE FROM posdb.tbl_log"_s);
    }

    void savesThisCounter_data()
    {
        // Control, what is entered, the file's line (its section is the only one with it), the log's, and whether it
        // works only after a start.
        drawnRows(uR"(
            server        | txt_DatabaseServer   | db2         | database_server=db2        | database server db1 to db2 | restart
            password      | txt_DatabasePassword | new 1       | database_password=new 1    | database password changed  | restart
            web server    | txt_WebServer        | web         | webserver=web              | report pages localhost to web | restart
            mail server   | txt_MailServer       | smtp.a      | server=smtp.a              | mail server (nothing) to smtp.a |
            mail password | txt_MailPassword     | xyz         | password=xyz               | mail password changed      |
            mail security | cbo_MailSecurity     | 2           | security=starttls          | mail encryption (nothing) to starttls |
            drawer device | txt_DrawerDevice     | \\.\COM3    | cashdrawerdevice=\\.\COM3  | drawer device none to //./COM3 | restart
            drawer port   | spn_DrawerPort       | 3           | cashdrawercommport=3       | drawer port 2 to 3         | restart
            drawer bytes  | txt_DrawerCommand    | <1B>p<3C>é  | cashdrawercommand=?p<é     | drawer command ?p0 to ?p<é | restart
            quoted        | txt_DrawerLine       | it's 9600   | cashdrawercomm=it's 9600   | drawer line settings (nothing) to it's 9600 | restart
            counter       | spn_ThisCounter      | 3           | counter=3                  | number of this counter 1 to 3 | restart
            printer       | txt_Printer          | Epson & Co  | printer=Epson & Co         | receipt printer (nothing) to Epson & Co |
            paper         | cbo_Paper            | 2           | paper=58mm                 | receipt paper (nothing) to 58mm |
            notes         | txt_Notes            | 5, 20       | notes=5, 20                | banknotes 5,10,20,50,100 to 5, 20 | restart
        )"_s);
    }

    void savesThisCounter()
    {
        auto [control, value, line, log, restart] = cells<5>();
        Options options(m_server, 0);
        QVERIFY(!options.canSave() && !options.wantsRestart());
        if (control == u"txt_DrawerDevice")
            options.enter(u"cbo_Drawer"_s, u"2"_s);
        options.enter(control, value);
        QVERIFY(options.canSave());
        options.press(u"btn_Save"_s);
        QVERIFY(!options.canSave());
        QCOMPARE(options.wantsRestart(), restart == u"restart");
        QCOMPARE(stored().count('\n' + line.replace(u'?', u'\x1B').toUtf8() + "\r\n"), 1);
        QCOMPARE(logged(), QStringList{u"boss options: "_s + log.replace(u'?', u'\x1B')});
        started();
    }

    void refusesWhatTheFileOrTheStartWouldNotTake_data()
    {
        drawnRows(uR"(
            no notes      | txt_Notes            | 5,x       | The setting "notes" in section [Till] is "5,x", but it must be amounts above 0 with commas between them, as 5,10,20.
            semicolon     | txt_DatabasePassword | a;b       | The password cannot have a semicolon in it: it ends a part of the connection. [Options]
            in quotes     | txt_DatabaseUser     | "a"       | The value of "database_user" in section [System] stands in quotes, which the settings file does not keep.
            blank         | txt_MailFrom         | _a        | The value of "from" in section [Mail] begins or ends with a blank, which the settings file does not keep.
            too long      | txt_MailUser         | LONG      | The value of "user" in section [Mail] is longer than the 254 bytes that the settings file holds (it has 255).
            half a byte   | txt_DrawerCommand    | <1>       | The drawer's command has a "<" that two hexadecimal digits and a ">" do not follow. A "<" itself is <3C>. [Options]
            zero byte     | txt_DrawerCommand    | a<00>     | The value of "cashdrawercommand" in section [System] has a line break or a zero byte in it, which the settings file cannot hold.
            no device     | cbo_Drawer           | 2         | Enter the path of the drawer's device, or choose another kind of drawer. [Options]
        )"_s);
    }

    void refusesWhatTheFileOrTheStartWouldNotTake()
    {
        const auto [control, value, refusal] = cells<3>();
        Options options(m_server, 0, {u"refuse: "_s + refusal});
        const QByteArray before = stored();
        options.enter(u"txt_WebServer"_s, u"web2"_s); // what goes with it is not written either
        options.enter(control, value == u"LONG" ? QString(255, u'x') : QString(value).replace(u'_', u' '));
        options.press(u"btn_Save"_s);
        QVERIFY(options.canSave() && !options.wantsRestart());
        QCOMPARE(stored(), before);
        QCOMPARE(logged(), QStringList());
    }

    void asksBeforeWhatWasEnteredIsLost()
    {
        const QString save =
            u"choose: Save what was entered on the page \"This counter\"? [Options] (question: yes no CANCEL) -> "_s;
        const QString forget = u"confirm: Forget what was entered on this page and is not saved? [Options] -> "_s;
        Options options(
            m_server, 0,
            {save + u"cancel"_s, forget + u"no"_s, forget + u"yes"_s, save + u"no"_s, save + u"yes"_s,
             u"refuse: The password cannot have a semicolon in it: it ends a part of the connection. [Options]"_s,
             save + u"yes"_s});
        const auto web = [&options] { return options.part<QLineEdit>(u"txt_WebServer"_s)->text(); };
        options.enter(u"txt_WebServer"_s, u"web2"_s);
        QVERIFY(!options.window.showPage(1));
        QCOMPARE(options.part<QListWidget>(u"ListView_Pages"_s)->currentRow(), 0);
        options.press(u"btn_Refresh"_s);
        QCOMPARE(web(), u"web2"_s);
        options.press(u"btn_Refresh"_s);
        QCOMPARE(web(), u"localhost"_s);
        options.enter(u"txt_WebServer"_s, u"web3"_s);
        QVERIFY(options.window.showPage(1) && options.window.showPage(0));
        QCOMPARE(web(), u"localhost"_s);
        options.enter(u"txt_WebServer"_s, u"web4"_s);
        options.enter(u"txt_DatabasePassword"_s, u"a;b"_s);
        QTest::keyClick(&options.window, Qt::Key_Escape); // what was refused keeps the window
        QVERIFY(options.window.isVisible());
        options.enter(u"txt_DatabasePassword"_s, u"old1"_s);
        options.window.close();
        QVERIFY(!options.window.isVisible());
        QVERIFY(stored().contains("webserver=web4"));
    }

    // With the mouse gone: each part has a name, each button a key of its own, and Tab goes through the page to the
    // end.
    void canBeUsedByKeys_data() { drawnRows(u"counter | 0 | 0\nfields | 1 | 0\nreceipts | 1 | 1\nplans | 1 | 2"_s); }

    void canBeUsedByKeys()
    {
        const auto [page, tab] = cells<2>();
        Options options(m_server, page.toInt());
        auto *tabs = options.part<QTabWidget>(u"SSTabCentre"_s);
        tabs->setCurrentIndex(tab.toInt());
        QCoreApplication::processEvents();
        QStringList captions;
        for (int i = 0; tabs->isVisible() && i < tabs->count(); ++i)
            captions << tabs->tabText(i);
        QStringList names;
        for (const QWidget *part = options.window.nextInFocusChain(); part != &options.window;
             part = part->nextInFocusChain()) {
            const auto *label = qobject_cast<const QLabel *>(part);
            const auto *button = qobject_cast<const QPushButton *>(part);
            if (part->isVisible() && label && label->buddy())
                captions << label->text();
            if (part->isVisible() && button) {
                captions << button->text();
                QVERIFY2(button->text().contains(u'&') && button->toolTip().endsWith(u'.'), qPrintable(button->text()));
            }
            if (!part->isVisible() || (part->focusPolicy() & Qt::TabFocus) == 0 ||
                part->objectName().startsWith(u"qt_"))
                continue;
            names << part->objectName();
            if (!button && !qobject_cast<const QTabWidget *>(part))
                QVERIFY2(!part->accessibleName().isEmpty(), qPrintable(part->objectName()));
        }
        QCOMPARE(names.first(), u"ListView_Pages"_s);
        QCOMPARE(names.last(2), (QStringList{u"btn_Save"_s, u"btn_Close"_s}));
        QStringList keys;
        for (const QString &caption : captions)
            if (const qsizetype at = caption.indexOf(u'&'); at >= 0)
                keys << caption.mid(at + 1, 1).toLower();
        keys.sort();
        QCOMPARE(keys.removeDuplicates(), 0);
    }

    void triesWhatIsEnteredWithoutSavingIt()
    {
        Options options(m_server, 0);
        const PseudoTerminal drawer;
        options.press(u"btn_TestDrawer"_s);
        QCOMPARE(options.said(u"lbl_Drawer"_s), u"There is no drawer to open."_s);
        options.enter(u"cbo_Drawer"_s, u"2"_s);
        options.enter(u"txt_DrawerDevice"_s, u"/nowhere"_s);
        options.press(u"btn_TestDrawer"_s);
        QVERIFY(options.said(u"lbl_Drawer"_s).contains(u"did not take it: Invalid Port Number"_s));
        options.enter(u"txt_DrawerDevice"_s, drawer.path());
        options.enter(u"txt_DrawerCommand"_s, u"<1B>p<00>"_s);
        options.press(u"btn_TestDrawer"_s);
        QCOMPARE(drawer.arrived(), QByteArray("\x1Bp\0", 3));
        QCOMPARE(logged(), QStringList{u"boss options: cash drawer opened as a test"_s});

        options.press(u"btn_TestSlip"_s);
        options.press(u"btn_ChoosePrinter"_s);
        options.enter(u"txt_Printer"_s, u"Epson"_s);
        options.desk.trouble = u"Out of paper."_s;
        options.press(u"btn_TestSlip"_s);
        QCOMPARE(options.desk.printed, (QStringList{u"TEST SLIP on Slip 58mm"_s, u"TEST SLIP on Epson 58mm"_s}));
        QCOMPARE(options.said(u"lbl_Printer"_s), u"Out of paper."_s);
        options.desk.printers = false;
        options.press(u"btn_ChoosePrinter"_s);
        QCOMPARE(options.said(u"lbl_Printer"_s), u"No printer is set up on this computer."_s);
        QCOMPARE(stored().replace("webserver=localhost\r\n", "").size(), sampleFile.size());
    }

    void changesTheCentre()
    {
        Options options(m_server, 1,
                        {u"inform: \"Hall\" has no place on the plan yet, so nobody could choose it there: draw it "
                         "under \"Plans\"."_s});
        QVERIFY(!options.canSave());
        options.press(u"btn_AddField"_s);
        options.nameField(4, 0, u"H"_s);
        options.nameField(4, 1, u"Hall"_s);
        options.nameField(3, 1, u"Court 1"_s);
        options.enter(u"cbo_Whole"_s, u"0"_s);
        options.enter(u"cbo_Part"_s, u"2"_s);
        options.press(u"btn_AddPair"_s);
        options.enter(u"spn_FirstHour"_s, u"7"_s);
        options.enter(u"txt_Address"_s, u"Larkmere/"_s);
        options.enter(u"spn_Counters"_s, u"4"_s);
        options.enter(u"spn_SpecialGroups"_s, u"2"_s);
        options.press(u"btn_Save"_s);
        QVERIFY(!options.canSave() && options.wantsRestart());
        const AppSettings settings = started();
        QCOMPARE(QStringList(settings.FieldNames.begin(), settings.FieldNames.begin() + 6).join(u'|'), u"N|A|B|C|H|"_s);
        QCOMPARE(settings.FieldDisplayNames[4] + settings.FieldDisplayNames[3], u"HallCourt 1"_s);
        QCOMPARE(settings.SharedFields[0] + u' ' + settings.SharedFields[1], u"0&1 0&2"_s);
        QCOMPARE((std::vector<int>{settings.MaxFieldIndex, settings.firstHour, settings.lastHour, settings.CounterCount,
                                   settings.SpecialGroupLimit}),
                 (std::vector<int>{4, 7, 1, 4, 2}));
        QCOMPARE(ReadSetting(u"Address"_s, u"address2"_s, {}), QString());
        QVERIFY(stored().startsWith("; of the tests\r\n[System]\r\nfields=5\r\n"));
        QCOMPARE(logged().join(u"; "_s).remove(u"boss options: "_s),
                 u"field 4 C Court to C Court 1; field 5 (nothing) to H Hall; working hours 8-1 to 7-1; "
                 "shared pairs North pitch & North A to North pitch & North A, North pitch & North B; "
                 "address Larkmere / Heron Walk to Larkmere; number of counters 3 to 4; special groups 5 to 2"_s);
    }

    void removesTheLastField()
    {
        Options options(
            m_server, 1,
            {u"confirm: Remove Court? Its bookings stay in the database, but nobody sees them any more until "
             "the field is added again. [Options] -> yes"_s,
             u"confirm: Remove North B? Its bookings stay in the database, but nobody sees them any more "
             "until the field is added again. [Options] -> yes"_s,
             u"refuse: North A shares its ground with another field. Remove that pair first. [Options]"_s});
        for (int i = 0; i < 3; ++i)
            options.press(u"btn_RemoveField"_s);
        options.part<QListWidget>(u"ListView_Pairs"_s)->setCurrentRow(0);
        options.press(u"btn_RemovePair"_s);
        options.press(u"btn_Save"_s);
        const AppSettings settings = started();
        QCOMPARE(settings.MaxFieldIndex, 1);
        QCOMPARE(settings.SharedFields[0], QString());
    }

    void refusesACentreThatMakesNoSense_data()
    {
        // What is done, in short, and what is refused.
        drawnRows(uR"(
            hours         | spn_LastHour=8    | The last hour after midnight must be before 8:00, when the next day begins.
            no name       | field 1 0         | Field 2 needs both a short name and a name that staff read.
            its own key   | field 1 0 pitch1  | "pitch1" counts as no name for this field: the list would end before it.
            same name     | field 1 1 Court   | Two fields are called "Court". Staff could not tell them apart.
            backslash     | field 1 1 A\B     | The name of field 2 cannot have a backslash in it.
            empty line    | txt_Contact=a//b  | An empty line would end the contact lines of the receipts. Take it out, or put a point there.
            with itself   | pair 1 1          | North A cannot be a part of itself.
            twice         | pair 0 1          | North A is a part of North pitch already.
            in a circle   | pair 1 0          | North A lies within North pitch already, so it cannot be the whole of it.
            no second     | pair 1 -1         | A pair needs two fields of the list.
        )"_s);
    }

    void refusesACentreThatMakesNoSense()
    {
        const auto [deed, refusal] = cells<2>();
        Options options(m_server, 1, {u"refuse: "_s + refusal + u" [Options]"_s});
        const QByteArray before = stored();
        const QStringList words = deed.split(u' ');
        if (words[0] == u"field")
            options.nameField(words[1].toInt(), words[2].toInt(), words.value(3));
        else if (words[0] != u"pair")
            options.enter(deed.section(u'=', 0, 0), deed.section(u'=', 1));
        if (words[0] == u"pair") {
            options.enter(u"cbo_Whole"_s, words[1]);
            options.enter(u"cbo_Part"_s, words[2]);
            options.press(u"btn_AddPair"_s);
            QVERIFY(!options.canSave());
        } else {
            options.press(u"btn_Save"_s);
            QVERIFY(options.canSave());
        }
        QCOMPARE(stored(), before);
    }

    void keepsWhatOtherKeysNeed()
    {
        // This counter would be above the number of counters, which only the start knows.
        WriteSetting(u"System"_s, u"counter"_s, u"3"_s);
        Options options(m_server, 1,
                        {u"refuse: The setting \"counter\" in section [System] is \"3\", but it must be a whole number "
                         "from 1 to 2, the number of counters (key \"counters\")."_s});
        options.enter(u"spn_Counters"_s, u"2"_s);
        options.press(u"btn_Save"_s);
        QCOMPARE(started().CounterCount, 3);
    }

    void drawsThePlan()
    {
        Options options(m_server, 1);
        const QString file = m_folder.filePath(u"plan.png"_s);
        QVERIFY(QImage(200, 100, QImage::Format_RGB32).save(file));
        options.part<QTabWidget>(u"SSTabCentre"_s)->setCurrentIndex(2);
        QVERIFY(!options.part<PlanPart>(u"PlanPart"_s)->takePicture(m_folder.filePath(u"tamsora.ini"_s)));
        QVERIFY(options.part<PlanPart>(u"PlanPart"_s)->takePicture(file));
        QCoreApplication::processEvents();
        auto *editor = options.part<PlanEditor>(u"PlanEditor"_s);
        auto *fields = options.part<QListWidget>(u"ListView_PlanFields"_s);
        fields->setCurrentRow(1);
        drag(editor, {120, 10}, {160, 50}); // drawn
        drag(editor, {60, 40}, {70, 50});   // the first field's is moved: a press on it chooses it
        QCOMPARE(fields->currentRow(), 0);
        drag(editor, {120, 80}, {130, 500}); // its lower right corner, to the picture's edge and no farther
        fields->setCurrentRow(2);
        drag(editor, {150, 90}, {170, 60}); // from below
        QTest::keyClick(editor, Qt::Key_Right);
        QTest::keyClick(editor, Qt::Key_Up, Qt::ShiftModifier);
        fields->setCurrentRow(3);
        drag(editor, {5, 5}, {6, 6}); // a click draws nothing
        options.press(u"btn_Save"_s);
        const auto corners = [](int field) {
            QStringList texts;
            for (const double corner : readHotSpot(u"HotSpot"_s, field).value_or(std::array<double, 4>{}))
                texts << QString::number(corner);
            return texts.join(u' ');
        };
        const auto isNear = [&corners](int field,
                                       const QString &wanted) { // a pixel of the widget is not one of the picture
            const QStringList are = corners(field).split(u' ');
            for (int i = 0; i < 4; ++i)
                if (qAbs(are[i].toDouble() - wanted.section(u' ', i, i).toDouble()) > 1)
                    return false;
            return true;
        };
        QVERIFY2(isNear(0, u"20 30 130 100"_s), qPrintable(corners(0)));
        QVERIFY2(isNear(1, u"120 10 160 50"_s), qPrintable(corners(1)));
        QVERIFY2(isNear(2, u"151 60 171 89"_s), qPrintable(corners(2)));
        QVERIFY(!readHotSpot(u"HotSpot"_s, 3));
        const PicturePlacement picture = readPicturePlacement(u"Layout"_s);
        QCOMPARE(picture.image, file);
        QCOMPARE((std::vector{picture.top, picture.left, picture.height, picture.width}),
                 (std::vector{0.0, 0.0, 100.0, 200.0}));
        QCOMPARE(logged().size(), 4);
        QVERIFY2(logged()[1].startsWith(u"boss options: ground plan place of North pitch 10, 20, 110, 70 to "_s),
                 qPrintable(logged()[1]));
        fields->setCurrentRow(1);
        QTest::keyClick(editor, Qt::Key_Delete);
        options.press(u"btn_Save"_s);
        QVERIFY(!readHotSpot(u"HotSpot"_s, 1));
    }

    void copiesForAnotherCounter()
    {
        const QString path = m_folder.filePath(u"counter-2.ini"_s);
        Options options(m_server, 1, {u"inform"_s, u"inform"_s, u"inform"_s});
        auto *page = options.part<page_Centre>(u"page_Centre"_s);
        QVERIFY(page->copyFor(2, path));
        AppSettings copied = started(path);
        QCOMPARE(copied.ThisCounter, 2);
        QCOMPARE(started().ThisCounter, 1);
        copied.ThisCounter = 1;
        QCOMPARE(copied.databasePassword + copied.FieldDisplayNames[3], u"old1Court"_s);
        QVERIFY(!(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther)));
        QVERIFY(!page->copyFor(4, path) && !QFile::exists(path + u".part"_s)); // there are three
        QCOMPARE(started(path).ThisCounter, 2);                                // the copy before is not lost
        QVERIFY(!page->copyFor(2, settingsFilePath()));
        QCOMPARE(started().ThisCounter, 1);
        QCOMPARE(logged(), QStringList{u"boss options: settings copied for counter 2"_s});
    }

    // In a folder whose path is as long as paths can be, the file can be read but no new one made beside it.
    void tellsWhatCannotBeWritten()
    {
        constexpr int longestFolder = 4080;
        QString deep = m_folder.filePath(u"deep"_s);
        while (deep.size() < longestFolder - 201)
            deep += u'/' + QString(200, u'x');
        deep += u'/' + QString(longestFolder - deep.size() - 1, u'y');
        QVERIFY(QDir().mkpath(deep));
        QVERIFY(QFile::copy(settingsFilePath(), deep + u"/tamsora.ini"_s));
        qputenv("XDG_CONFIG_HOME", deep.toUtf8());
        Options options(
            m_server, 0,
            {u"inform: The settings file "_s + settingsFilePath() + u" cannot be written. Nothing was changed."_s});
        const QByteArray before = stored();
        options.enter(u"txt_DatabaseUser"_s, u"other"_s);
        options.press(u"btn_Save"_s);
        QVERIFY(options.canSave() && !options.wantsRestart());
        QCOMPARE(stored(), before);
        QCOMPARE(logged(), QStringList());
    }

    void putsBackWhatWasWrittenBeforeTheFailure()
    {
        WriteSetting(u"System"_s, u"database_password"_s, u"\" blank\""_s);
        SettingsDraft draft;
        draft.set(u"System"_s, u"database_password"_s, u"new1"_s);
        draft.set(u"System"_s, u"database_user"_s, u"a\nb"_s); // no line can hold it
        QVERIFY(!draft.refusal().isEmpty());
        const QByteArray before = stored();
        QVERIFY_EXCEPTION_THROWN(draft.write(), NotDone);
        QCOMPARE(stored(), before);
    }
};

QTEST_MAIN(tst_Options)
#include "tst_Options.moc"
