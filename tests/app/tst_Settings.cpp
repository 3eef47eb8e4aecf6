#include "app/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray workingHours = "[System]\r\nhour_start=8\r\nhour_end=2\r\n";

QString listed(const std::array<QString, 16> &texts)
{
    return QStringList(texts.begin(), texts.end()).join(u'|').remove(QRegularExpression(u"\\|+$"_s));
}

} // namespace

class tst_Settings : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"config/tamsora.ini"_s);

    void store(const QByteArray &bytes) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QByteArray stored() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    static AppSettings loaded()
    {
        AppSettings settings = loadStartupValues();
        LoadSettings(settings);
        return settings;
    }

    static QString refusal()
    {
        try {
            loaded();
        } catch (const SettingError &error) {
            return QString::fromUtf8(error.what());
        }
        return u"(started)"_s;
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(QDir(m_folder.filePath(u"config"_s)).removeRecursively());
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.filePath(u"config"_s)));
    }
    void fillsAFreshFile()
    {
        const QString text = refusal();
        QVERIFY2(text.contains(u"\"hour_start\" in section [System] is \"StartOfWorkingHour\""_s), qPrintable(text));
        QVERIFY2(text.contains(m_path), qPrintable(text));
        QCOMPARE(stored(), "[System]\r\nCourtType=1\r\npicture_front=picture_front\r\npicture_logo=picture_logo\r\n"
                           "hour_start=StartOfWorkingHour\r\nhour_end=EndOfWorkingHour\r\ndatabase_server=localhost\r\n"
                           "webserver=localhost\r\ncashdrawercommport=2\r\n");
    }

    void loadsEverything()
    {
        store("; the centre's\n[System]\nfields=3\ncounter=2\ncounters=3\nCourtType=2\npicture_front=front.png\n"
              "picture_logo=logo.png\nhour_start= 8 \nhour_end=\"2\"\ndatabase_server=db;1\ndatabase_user=O'Neil\n"
              "database_password=\" p;}w\xE9 \"\nwebserver=\ncashdrawercommport=1\ncashdrawercommand=\x1Bp0\n"
              "cashdrawercomm=9600,N,8,1\npitch0=North\npitch1=S\xC3\xBC"
              "d\npitch2=East\ndisplay1=South pitch\n[Shared]\nShared0=0&1\nShared1=0&2\n"
              "[Till]\nnotes= 20, 5,0.50\ncashdrawerdevice=/dev/none of this section\n");
        const AppSettings settings = loaded();
        QCOMPARE((std::vector<int>{settings.MaxFieldIndex, settings.CourtTypeIndex, settings.ThisCounter,
                                   settings.CounterCount, settings.SpecialGroupLimit, settings.firstHour,
                                   settings.lastHour, settings.drawerPort}),
                 (std::vector<int>{2, 1, 2, 3, 5, 8, 2, 1}));
        QCOMPARE((QStringList{settings.frontPicture, settings.logoPicture, settings.webServer, settings.drawerCommand,
                              settings.drawerText})
                     .join(u'|'),
                 u"front.png|logo.png|localhost|\u001Bp0|9600,N,8,1"_s);
        QCOMPARE(settings.ConnectionString, u"DRIVER={MySQL ODBC 3.51 Driver};SERVER=db;1;DATABASE=posdb;UID=O'Neil;"
                                            "PWD= p;}w\u00E9 ;OPTION=18475"_s);
        QCOMPARE(listed(settings.FieldNames), u"North|S\u00FCd|East"_s);
        QCOMPARE(listed(settings.FieldDisplayNames), u"pitch0|South pitch|pitch2"_s);
        QCOMPARE((QStringList{settings.fieldName(1), settings.fieldName(3)}),
                 (QStringList{u"South pitch"_s, u"Field 4"_s}));
        QCOMPARE(listed(settings.SharedFields), u"0&1|0&2"_s);
        QCOMPARE(settings.tillNotes, (std::vector<qint64>{50, 500, 2000}));
        QCOMPARE(settings.drawerDevice, QString());
        QVERIFY(stored().contains("\nwebserver=localhost\ncashdrawercommport=1\n"));
        QVERIFY(stored().contains("\ndisplay1=South pitch\ndisplay0=pitch0\r\ndisplay2=pitch2\r\n[Shared]\n"));
    }

    void namesTheFields_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("maxFieldIndex");
        QTest::addColumn<QString>("displayNames");
        QTest::addColumn<QString>("shared");
        const auto row = [](const char *name, const QByteArray &text, int most, const QString &display,
                            const QString &shared) {
            QTest::newRow(name) << workingHours + text << most << display << shared;
        };
        row("nothing configured, one named", "pitch0=A\npitch1=B\n", 0, u"pitch0"_s, {});
        row("no name", "fields=4\n[Shared]\nShared0=0&1\n", -1, {}, {});
        row("empty first name", "fields=4\npitch0=\npitch1=B\n", -1, {}, {});
        row("leading run of names", "fields=16\npitch0=A\npitch1=B\npitch2=C\npitch4=E\n", 2, u"pitch0|pitch1|pitch2"_s,
            {});
        row("name of its own key", "fields=3\npitch0=A\npitch1=pitch1\npitch2=C\n", 0, u"pitch0"_s, {});
        row("name of another key", "fields=2\npitch0=pitch1\npitch1=pitch0\n", 1, u"pitch0|pitch1"_s, {});
        row("shared pairs end at the first gap",
            "fields=3\npitch0=A\npitch1=B\npitch2=C\n[Shared]\nShared0=0&1\nShared2=0&2\n", 2,
            u"pitch0|pitch1|pitch2"_s, u"0&1"_s);
        row("shared pair of its own key", "fields=2\npitch0=A\npitch1=B\n[Shared]\nShared0=Shared0\nShared1=0&1\n", 1,
            u"pitch0|pitch1"_s, {});
    }

    void namesTheFields()
    {
        QFETCH(QByteArray, file);
        store(file);
        const AppSettings settings = loaded();
        QTEST(static_cast<int>(settings.MaxFieldIndex), "maxFieldIndex");
        QTEST(listed(settings.FieldDisplayNames), "displayNames");
        QTEST(listed(settings.SharedFields), "shared");
        QVERIFY(!stored().contains("counter") && stored().count("fields") == file.count("fields"));
    }

    void refusesBadValues_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("part"); // of the error text; "(started)" where there is none
        const auto row = [](const QByteArray &text, const QString &part) {
            QTest::newRow(text.left(60).toPercentEncoding(" =,").constData()) << "[System]\r\n" + text << part;
        };
        for (const QByteArray value : {"0", "17", "many", "3a", "99999999999999999999"})
            row("fields=" + value + "\r\n", u"\"fields\" in section [System] is \""_s + QString::fromLatin1(value) +
                                                u"\", but it must be a whole number from 1 to 16"_s);
        row("counter=2", u"from 1 to 1, the number of counters"_s);
        row("counter=4\ncounters=3", u"from 1 to 3, the number of counters"_s);
        row("CourtType=court", u"\"CourtType\""_s);
        row("hour_start=24\nhour_end=2", u"\"hour_start\""_s);
        row("hour_start=0\nhour_end=0", u"from 1 to 23"_s);
        row("hour_start=8", u"\"EndOfWorkingHour\""_s);
        row("hour_start=8\nhour_end=8", u"from 0 to 7: the last hour after midnight"_s);
        row("hour_start=8\nhour_end=2\ncashdrawercommport=40000", u"\"cashdrawercommport\""_s);
        for (const QByteArray value : {"5,x", "5,,10", "0", "-5", "1e300"})
            row("hour_start=8\nhour_end=2\n[Till]\nnotes=" + value, u"\"notes\" in section [Till]"_s);
        row("hour_start=7.5\nhour_end=(0)", u"(started)"_s);
        row("hour_start=23\nhour_end=22\nfields=16\ncounter=3\ncounters=3", u"(started)"_s);
        row(QByteArray("\0\0\xFF\xFE[\0]=\xC3\x28hour_start=8", 23), u"\"hour_start\""_s);
        row("hour_start=" + QByteArray(300, '\xE2') + "\n", u"\"hour_start\""_s);
    }

    void refusesBadValues()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, part);
        store(file);
        const QString text = refusal();
        QVERIFY2(text.contains(part), qPrintable(text));
        QVERIFY2(text.contains(m_path) || part == u"(started)"_s, qPrintable(text));
    }

    void startsWithoutAWritableFile()
    {
        QFile blocker(m_folder.filePath(u"blocker"_s));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(blocker.fileName())); // a file where the folder should be
        QVERIFY(refusal().contains(u"StartOfWorkingHour"_s));
        QVERIFY(!WriteSetting(u"System"_s, u"a"_s, u"1"_s));
        init();
        QVERIFY(QDir().mkpath(m_path)); // a folder where the file should be
        QVERIFY(refusal().contains(u"StartOfWorkingHour"_s));
        QVERIFY(!WriteSetting(u"System"_s, u"a"_s, u"1"_s));
    }

    void readsAndWritesSingleSettings()
    {
        QCOMPARE(ReadSetting(u"Contact"_s, u"contact1"_s, {}), QString());
        QVERIFY(!QFile::exists(m_path));
        QVERIFY(WriteSetting(u"Contact"_s, u"contact1"_s, u"S\u00FCd %1"_s));
        QCOMPARE(ReadSetting(u"Contact"_s, u"contact1"_s, u"none"_s), u"S\u00FCd %1"_s);
        QCOMPARE(ReadSetting(u"Contact"_s, u"contact2"_s, u"none"_s, u"other.ini"_s), u"none"_s);
        QCOMPARE(ReadSetting(u"Contact"_s, u"contact2"_s, u"new"_s, u"other.ini"_s), u"none"_s);
        QCOMPARE(stored(), "[Contact]\r\ncontact1=S\xC3\xBC"
                           "d %1\r\n");
        store(QByteArray("[S]\r\na=1\0"
                         "2\r\nb=\0\r\n",
                         17));
        QCOMPARE(ReadSetting(u"S"_s, u"a"_s, u"default"_s), u"1"_s);
        QCOMPARE(ReadSetting(u"S"_s, u"b"_s, u"default"_s), QString()); // one character long, so no default
    }

    void readsPictures()
    {
        store("[Layout]\nImage=plan.png\nTop=10\nLeft=-2.5\nHeight=1,200\nWidth=8\n[TopHeader]\nTop=high\n");
        const PicturePlacement plan = readPicturePlacement(u"Layout"_s);
        QCOMPARE(plan.image, u"plan.png"_s);
        QVERIFY((std::array{plan.top, plan.left, plan.height, plan.width} == std::array{10.0, -2.5, 1200.0, 8.0}));
        QVERIFY_EXCEPTION_THROWN(readPicturePlacement(u"TopHeader"_s), SettingError);
        QVERIFY(stored().contains("Top=high\r\nImage=1\r\nLeft=1\r\nHeight=1\r\nWidth=1\r\n") ||
                stored().contains("Top=high\nImage=1\r\nLeft=1\r\nHeight=1\r\nWidth=1\r\n"));
        const PicturePlacement fresh = readPicturePlacement(u"WaitingList"_s);
        QCOMPARE(fresh.image, u"1"_s);
        QCOMPARE(fresh.width, 1.0);

        QVERIFY(stored().contains("[WaitingList]\r\nImage=1\r\n"));
    }
};

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
