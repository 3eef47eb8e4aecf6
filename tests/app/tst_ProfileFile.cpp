#include "app/ProfileFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// In the file texts of the tables | is a line end of two bytes.
QByteArray lines(QByteArray text)
{
    return text.replace('|', "\r\n");
}

QByteArray utf16(const QString &text)
{
    QByteArray bytes("\xFF\xFE");
    for (const QChar c : text)
        bytes.append(static_cast<char>(c.cell())).append(static_cast<char>(c.row()));
    return bytes;
}

} // namespace

class tst_ProfileFile : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(u"tamsora.ini"_s);

    void store(const QByteArray &bytes) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QByteArray stored() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

private Q_SLOTS:
    void init() { QFile::remove(m_path); }
    void reads_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("value");
        const auto row = [](const QByteArray &name, const QByteArray &file, const QByteArray &value,
                            const QString &key = u"key"_s) { QTest::newRow(name) << lines(file) << key << value; };
        row("case of names", "[SYSTEM]|KEY=v", "v");
        row("blanks, tabs, VT round key and value", "[System]| \v key\t=\v  v w \t", "v w");
        row("blanks round the header, text behind it", " \t[ System\t] ; c|key=v", "v");
        row("header without its end", "[System|key=v", "v");
        row("first bracket ends the header", "[System]b]|key=v", "v");
        row("asked name with blanks", "[System]|key=v", "v", u"  key "_s);
        row("asked name with a tab", "[System]|key=v", "", u"\tkey"_s);
        row("double quotes", "[System]|key=\"v\"", "v");
        row("single quotes", "[System]|key='v'", "v");
        row("quotes protect blanks", "[System]|key=  \"  v  \"  ", "  v  ");
        row("outer pair only", "[System]|key=\"\"v\"\"", "\"v\"");
        row("unmatched in front", "[System]|key=\"v", "\"v");
        row("lone quote", "[System]|key=\"", "\"");
        row("empty quotes", "[System]|key=\"\"", "");
        row("blanks only", "[System]|key=   |next=1", "");
        row("comment", "[System]|;key=v|  ;key=w", "");
        row("hash is no comment", "[System]|#key=v", "v", u"#key"_s);
        row("semicolon in a value", "[System]|key=v ; c", "v ; c");
        row("commented header", ";[System]|key=v", "");
        row("equals sign in a value", "[System]|key=a=b", "a=b");
        row("first of two keys", "[System]|key=1|key=2", "1");
        row("first of two keys, empty", "[System]|key=|key=2", "");
        row("second section of the name", "[System]|a=1|[X]|[System]|key=v", "");
        row("no equals sign, then one", "[System]|key|key=v", "v");
        row("key before any section", "key=v|[System]|a=1", "");
        row("key of another section", "[System]|[X]|key=v", "");
        row("name that begins another", "[System]|key10=ten|key1=one", "one", u"key1"_s);
        row("mixed line ends", "[System]\n\r\r\na=1\rkey=v\nb=2", "v");
        row("no escapes", "[System]|key=C:\\a\\n%PATH%", "C:\\a\\n%PATH%");
        row("Windows-1252 bytes", "[System]|key=caf\xE9", "caf\xE9");
        row("UTF-8 mark hides a header on line 1", "\xEF\xBB\xBF[System]|key=v", "");
        row("later sections stand after a UTF-8 mark", "\xEF\xBB\xBF[X]|[System]|key=v", "v");
        row("UTF-16BE is not understood", QByteArray("\xFE\xFF\0[\0S\0]\0\n\0k\0=\0v", 16), "", u"k"_s);
        row("UTF-16LE", utf16(u"[System]\r\nkey= \"caf\u00E9 \U0001F3C0\"\r\n"_s), "caf\xC3\xA9 \xF0\x9F\x8F\x80");
        row("UTF-16LE with half a character at its end", utf16(u"[System]\nkey=v"_s) + 'x', "v");
        row("empty file", "", "");
        // Longer values are cut at 254 bytes.
        const QByteArray a(600, 'a');
        for (const int length : {253, 254, 255, 600})
            row(QByteArray::number(length) + " bytes", "[System]|key=" + a.left(length), a.left(qMin(length, 254)));
        row("quotes go before the cut", "[System]|key=\"" + a.left(254) + '"', a.left(254));
        row("4-byte character across the cut", "[System]|key=" + a.left(251) + "\xF0\x9F\x8F\x80z", a.left(251));
        row("character that just fits", "[System]|key=" + a.left(252) + "\xC3\xA9z", a.left(252) + "\xC3\xA9");
        row("Windows-1252 is cut anywhere", "[System]|key=" + a.left(253) + "\xE9\xE9", a.left(253) + "\xE9");
    }

    void reads()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, key);
        store(file);
        QTEST(ProfileFile(m_path).value(u" System "_s, key, 255), "value");
        QCOMPARE(stored(), file);
    }

    void writes_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, const QByteArray &before, const QString &key, const QString &value,
                            const QByteArray &after) {
            QTest::newRow(name) << lines(before) << key << value << lines(after);
        };
        row("empty file", "", u"CourtType"_s, u"1"_s, "[System]|CourtType=1|");
        row("no final line end", "[System]|a=1", u"b"_s, u"2"_s, "[System]|a=1|b=2|");
        row("new section, no final line end", "[X]|c=3", u"b"_s, u"2"_s, "[X]|c=3|[System]|b=2|");
        row("before a final comment", "[System]|a=1|; tail|[X]|", u"b"_s, u"2"_s, "[System]|a=1|b=2|; tail|[X]|");
        row("before blank lines", "[System]|a=1|||[X]|", u"b"_s, u"2"_s, "[System]|a=1|b=2|||[X]|");
        row("section without keys", "[System]|; c|[X]|", u"b"_s, u"2"_s, "[System]|b=2|; c|[X]|");
        row("header without a line end", "[System]", u"b"_s, u"2"_s, "[System]|b=2|");
        row("beside a long line", "[System]|a=" + QByteArray(600, 'a') + "|", u"b"_s, u"2"_s,
            "[System]|a=" + QByteArray(600, 'a') + "|b=2|");
        row("in place, spelling kept", "; c|[System]|A=1|z=2||", u"a"_s, u"9"_s, "; c|[System]|A=9|z=2||");
        row("quoted empty value", "[System]|b=\"\"|", u"b"_s, u"x"_s, "[System]|b=x|");
        row("odd spacing elsewhere", " [ System ]|  a  =  1  | z = 2 \n\n", u"a"_s, u"9"_s,
            " [ System ]|  a  =9| z = 2 \n\n");
        row("first of two keys", "[System]|a=1|a=2|", u"a"_s, u"9"_s, "[System]|a=9|a=2|");
        row("raw blanks and quotes", "[System]|", u"a"_s, u" \"v\" ; "_s, "[System]|a= \"v\" ; |");
        row("blanks round the key", "[System]|", u" a "_s, u"1"_s, "[System]|a=1|");
        row("line feeds stay", "[System]\na=1\n", u"b"_s, u"2"_s, "[System]\na=1\nb=2|");
        row("no value yet on the last line", "[System]|a=", u"a"_s, u"2"_s, "[System]|a=2");
        row("Windows-1252", "[X]|c=\xE9|", u"a"_s, u"\u00E9 \u20AC \u0416"_s, "[X]|c=\xE9|[System]|a=\xE9 \x80 ?|");
        row("UTF-8 mark", "\xEF\xBB\xBF[System]|a=1|", u"a"_s, u"2"_s, "\xEF\xBB\xBF[System]|a=1|[System]|a=2|");
        row("UTF-16LE", utf16(u"[System]\r\nb=\u0416\r\n"_s), u"a"_s, u"\u20AC"_s,
            utf16(u"[System]\r\nb=\u0416\r\na=\u20AC\r\n"_s));
        row("UTF-16LE with half a character at its end", utf16(u"[System]\na=1"_s) + 'x', u"a"_s, u"22"_s,
            utf16(u"[System]\na=22"_s) + 'x');
    }

    void writes()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, key);
        QFETCH(QString, value);
        store(before);
        QVERIFY(ProfileFile(m_path).write(u"System "_s, key, value));
        QTEST(stored(), "after");
    }

    void leavesAnEqualValueUntouched()
    {
        const auto inode = [this] {
            struct stat status = {};
            return stat(QFile::encodeName(m_path).constData(), &status) == 0 ? status.st_ino : 0;
        };
        store("[System]\na = 1 \n");
        const auto before = inode();
        QVERIFY(ProfileFile(m_path).write(u"System"_s, u"a"_s, u"1"_s));
        QCOMPARE(stored(), "[System]\na = 1 \n");
        QCOMPARE(inode(), before);
    }

    void createsForItsOwnerOnly()
    {
        const auto mode = [this] { return QFile::permissions(m_path) & QFileDevice::Permissions(0x0077 | 0x0700); };
        const auto owner = QFileDevice::ReadUser | QFileDevice::WriteUser;
        const mode_t mask = umask(0);
        QVERIFY(ProfileFile(m_path).write(u"System"_s, u"a"_s, u"1"_s));
        QCOMPARE(mode(), owner);
        QVERIFY(ProfileFile(m_path).write(u"System"_s, u"a"_s, u"2"_s));
        QCOMPARE(mode(), owner);
        QVERIFY(QFile::setPermissions(m_path, QFile::permissions(m_path) | QFileDevice::ReadGroup));
        QVERIFY(ProfileFile(m_path).write(u"System"_s, u"a"_s, u"3"_s));
        QCOMPARE(mode(), owner | QFileDevice::ReadGroup);
        umask(mask);
    }

    void refusesWhatItCannotChange()
    {
        const ProfileFile inMissingFolder(m_folder.filePath(u"missing/tamsora.ini"_s));
        QVERIFY(!inMissingFolder.write(u"System"_s, u"a"_s, u"1"_s));
        QVERIFY(!QFile::exists(m_folder.filePath(u"missing"_s)));

        QVERIFY(QDir(m_folder.path()).mkdir(u"folder.ini"_s));
        QVERIFY(QFile::link(m_folder.filePath(u"folder.ini"_s), m_folder.filePath(u"link.ini"_s)));
        QCOMPARE(mkfifo(QFile::encodeName(m_folder.filePath(u"pipe.ini"_s)).constData(), 0600), 0);
        for (const QString &name : {u"folder.ini"_s, u"link.ini"_s, u"pipe.ini"_s}) {
            QCOMPARE(ProfileFile(m_folder.filePath(name)).value(u"System"_s, u"a"_s, 255), "");
            QVERIFY(!ProfileFile(m_folder.filePath(name)).write(u"System"_s, u"a"_s, u"1"_s));
        }
        store("[System]\r\na=1\r\n");
        QVERIFY(!ProfileFile(m_path).write(u"System"_s, u"a"_s, u"1\r\nb=2"_s));
        QCOMPARE(stored(), "[System]\r\na=1\r\n");

        // A link to the file is followed, not replaced.
        const QString link = m_folder.filePath(u"other.ini"_s);
        QVERIFY(QFile::link(m_path, link) && ProfileFile(link).write(u"System"_s, u"a"_s, u"2"_s));
        QCOMPARE(stored(), "[System]\r\na=2\r\n");
        QVERIFY(QFileInfo(link).isSymLink());
    }

    // Whatever the file holds: what was written is read back, and everything else of the file is still there.
    void survivesGarbage()
    {
        QRandomGenerator random(20261114);
        const QByteArray letters("[]=;\"' \t\r\nSystemab\0\xE9\xC3\xFF\xFE", 24);
        for (int round = 0; round < 400; ++round) {
            QByteArray bytes = round % 4 == 0 ? "\xFF\xFE" : "";
            for (quint32 left = random.bounded(200U); left > 0; --left)
                bytes += round % 2 == 0 ? static_cast<char>(random.bounded(256)) : letters[random.bounded(24)];
            store(bytes);
            const ProfileFile profile(m_path);
            (void)profile.value(u"System"_s, u"a"_s, 255);
            QVERIFY(profile.write(u"System"_s, u"key"_s, u"v"_s));
            QCOMPARE(profile.value(u"System"_s, u"key"_s, 255), "v");
            const QByteArray after = stored();
            const auto same = std::ranges::mismatch(bytes, after).in1 - bytes.cbegin();
            QVERIFY(after.size() > bytes.size() && after.endsWith(bytes.mid(same)));
        }
        // Large ones, and one that is too large to be a settings file.
        store(QByteArray(10LL * 1024 * 1024, '[') + "\r\n[System]\r\na=1\r\n");
        QVERIFY(ProfileFile(m_path).write(u"System"_s, u"a"_s, u"2"_s));
        QCOMPARE(ProfileFile(m_path).value(u"System"_s, u"a"_s, 255), "2");
        store(QByteArray(17LL * 1024 * 1024, '\0'));
        QVERIFY(!ProfileFile(m_path).write(u"System"_s, u"a"_s, u"2"_s));
    }

    void translatesEveryByte()
    {
        for (int byte = 1; byte < 256; ++byte) {
            const QByteArray one(1, static_cast<char>(byte));
            QCOMPARE(toWindows1252(profileText(one)), one);
        }
        QCOMPARE(profileText("\x88\xBC\xBD\xBE\x80\x81"), u"\u02C6\u00BC\u00BD\u00BE\u20AC\u0081"_s);
        QCOMPARE(profileText("\xC3\xA9 \xE2\x82\xAC"), u"\u00E9 \u20AC"_s);
    }
};

QTEST_GUILESS_MAIN(tst_ProfileFile)
#include "tst_ProfileFile.moc"
