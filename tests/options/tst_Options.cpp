#include "app/Application.h"
#include "options/OptionsPages.h"
#include "options/frm_FirstRun.h"
#include "options/frm_Options.h"
#include "counter/PrinterDesk.h"
#include "support/DrawnRows.h"
#include "support/TestStation.h"

#include <QTabWidget>
#include <QDir>
#include <QListWidget>
#include <QTest>

using namespace Qt::StringLiterals;

struct Desk : PrinterDesk {
    void lookForPrinters(std::function<void(std::optional<bool>)> told) override { told(true); }
    std::optional<PrinterChoice> choose(QWidget *) override { return {}; }
    void print(const Receipt &, const PrinterChoice &, std::function<void(QString)> told) override { told({}); }
    QString askForFile(QWidget *, const QString &) override { return {}; }
};

class tst_Options : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pictures()
    {
        QTemporaryDir dir;
        qputenv("XDG_CONFIG_HOME", dir.path().toUtf8());
        QDir assets(QStringLiteral(TAMSORA_DATABASE "/../assets"));
        for (auto f : assets.entryList({u"*.png"_s})) QFile::copy(assets.filePath(f), QCoreApplication::applicationDirPath() + u'/' + f);
        ScriptedPrompts nobody;
        frm_FirstRun guide(nobody);
        guide.show();
        QTest::qWait(200);
        guide.grab().save(u"/tmp/centre_guide.png"_s);
        guide.hide();
        QFile f(QStringLiteral(TAMSORA_DATABASE "/sample_centre.ini"));
        (void)f.open(QIODevice::ReadOnly);
        QFile g(settingsFilePath());
        (void)g.open(QIODevice::WriteOnly);
        g.write(f.readAll().replace("@COUNTER@", "1"));
        g.close();
        ScriptedPrompts person;
        Station station(testSettings({}), person);
        Desk desk;
        frm_Options window(station);
        addOptionsPages(window, station, u"boss"_s, desk);
        window.show();
        QTest::qWait(300);
        window.grab().save(u"/tmp/centre_counter.png"_s);
        window.showPage(1);
        auto *tabs = window.findChild<QTabWidget *>(u"SSTabCentre"_s);
        for (int i = 0; i < 3; ++i) {
            tabs->setCurrentIndex(i);
            QTest::qWait(300);
            window.grab().save(u"/tmp/centre_tab%1.png"_s.arg(i));
        }
        qInfo() << window.minimumSizeHint() << window.size();
    }
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    tst_Options test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_Options.moc"
