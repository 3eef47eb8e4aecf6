#include "app/ProfileFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

constexpr qint64 mostBytes = 16LL * 1024 * 1024;

// Windows-1252 where it differs from Latin-1: 0x80..0x9F.
constexpr std::array<char16_t, 32> upperControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromWindows1252(const QByteArray &bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text) {
        if (c >= u'\x80' && c < u'\xA0')
            c = upperControls[c.unicode() - 0x80U];
    }
    return text;
}

// A file's content with one QChar per unit, whatever the units mean: a byte, or two bytes of a UTF-16LE file.
struct Content
{
    QString units;
    QByteArray oddByte; // behind the last whole unit of a UTF-16LE file
    bool wide = false;
    bool utf8 = true;

    static Content fromBytes(const QByteArray &bytes)
    {
        Content content;
        content.wide = bytes.startsWith("\xFF\xFE");
        if (!content.wide) {
            content.units = QString::fromLatin1(bytes);
            content.utf8 = bytes.isValidUtf8();
            return content;
        }
        const qsizetype count = bytes.size() / 2;
        content.units.reserve(count);
        for (qsizetype i = 1; i < count; ++i)
            content.units += QChar(static_cast<uchar>(bytes[2 * i]), static_cast<uchar>(bytes[2 * i + 1]));
        content.oddByte = bytes.mid(2 * count);
        return content;
    }

    QByteArray toBytes() const
    {
        if (!wide)
            return units.toLatin1();
        QByteArray bytes("\xFF\xFE");
        bytes.reserve(2 * units.size() + 3);
        for (const QChar c : units) {
            bytes += static_cast<char>(c.cell());
            bytes += static_cast<char>(c.row());
        }
        return bytes + oddByte;
    }

    QString unitsOf(const QString &text) const
    {
        return wide ? text : QString::fromLatin1(utf8 ? text.toUtf8() : toWindows1252(text));
    }

    QByteArray bytesOf(QStringView part) const { return wide ? part.toUtf8() : part.toLatin1(); }
};

// The whole file; nothing when there is something that cannot be read, an empty text when there is no file.
std::optional<Content> readContent(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Content();
    QFile file(path);
    if (!info.isFile() || info.size() > mostBytes || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return Content::fromBytes(bytes);
}

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\v';
}

QStringView trimmed(QStringView text)
{
    const auto begin = std::find_if_not(text.begin(), text.end(), isBlank);
    while (text.end() != begin && isBlank(text.back()))
        text.chop(1);
    return text.mid(begin - text.begin());
}

// A name that is asked for or written loses its outer blanks, but keeps its tabs.
QString nameOf(const QString &asked)
{
    qsizetype begin = 0;
    qsizetype end = asked.size();
    while (begin < end && asked[begin] == u' ')
        ++begin;
    while (end > begin && asked[end - 1] == u' ')
        --end;
    return asked.mid(begin, end - begin);
}

bool sameName(QStringView a, QStringView b)
{
    const auto lower = [](QChar c) { return c >= u'A' && c <= u'Z' ? QChar(c.unicode() + 32) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::optional<QStringView> sectionName(QStringView line)
{
    const QStringView text = trimmed(line);
    if (!text.startsWith(u'['))
        return std::nullopt;
    const qsizetype close = text.indexOf(u']');
    return trimmed(close < 0 ? text.mid(1) : text.mid(1, close - 1));
}

// Where a key stands, or where it would be added. Positions count units from the start of the file.
struct Place
{
    bool hasSection = false;
    bool hasKey = false;
    qsizetype valueBegin = 0; // behind the equals sign
    qsizetype lineEnd = 0;    // of the key's line, without its line end
    qsizetype addAt = 0;      // behind the section's last key line and its line end
};

Place findPlace(QStringView file, QStringView section, QStringView key)
{
    Place place;
    qsizetype next = 0;
    for (qsizetype begin = 0; begin < file.size(); begin = next) {
        qsizetype end = begin;
        while (end < file.size() && file[end] != u'\r' && file[end] != u'\n')
            ++end;
        next = std::min(file.size(), end + (file.mid(end, 2) == u"\r\n" ? 2 : 1));
        const QStringView line = file.mid(begin, end - begin);
        if (const auto name = sectionName(line)) {
            if (place.hasSection)
                return place;
            place.hasSection = sameName(*name, section);
            place.addAt = next;
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (!place.hasSection || equals < 0 || trimmed(line).startsWith(u';'))
            continue;
        place.addAt = next;
        place.valueBegin = begin + equals + 1;
        place.lineEnd = end;
        place.hasKey = sameName(trimmed(line.left(equals)), key);
        if (place.hasKey)
            return place;
    }
    return place;
}

QStringView withoutQuotes(QStringView value)
{
    const bool quoted =
        value.size() > 1 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front();
    return quoted ? value.mid(1, value.size() - 2) : value;
}

QByteArray cutTo(QByteArray value, qsizetype most)
{
    if (value.size() <= most)
        return value;
    if (value.isValidUtf8()) {
        while (most > 0 && (static_cast<uchar>(value[most]) & 0xC0U) == 0x80U)
            --most;
    }
    value.truncate(most);
    return value;
}

// A new line, with the line end that its predecessor lacks.
void addLines(QString &file, qsizetype at, const QString &lines)
{
    const bool lacksEnd = at > 0 && file[at - 1] != u'\r' && file[at - 1] != u'\n';
    file.insert(at, (lacksEnd ? QStringLiteral("\r\n") : QString()) + lines);
}

bool replaceFile(const QString &path, const QByteArray &bytes)
{
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (isNew && !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return false;
    return file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

ProfileFile::ProfileFile(QString path) : m_path(std::move(path)) {}

QByteArray ProfileFile::value(const QString &section, const QString &key, int size) const
{
    const auto content = readContent(m_path);
    if (!content || size < 2)
        return {};
    const QStringView file = content->units;
    const Place place = findPlace(file, content->unitsOf(nameOf(section)), content->unitsOf(nameOf(key)));
    if (!place.hasKey)
        return {};
    const QStringView text = trimmed(file.mid(place.valueBegin, place.lineEnd - place.valueBegin));
    return cutTo(content->bytesOf(withoutQuotes(text)), size - 1);
}

bool ProfileFile::write(const QString &section, const QString &key, const QString &value) const
{
    const auto breaksLine = [](const QString &text) { return text.contains(u'\r') || text.contains(u'\n'); };
    auto content = readContent(m_path);
    if (!content || breaksLine(section) || breaksLine(key) || breaksLine(value))
        return false;
    QString &file = content->units;
    const QString sectionUnits = content->unitsOf(nameOf(section));
    const QString keyUnits = content->unitsOf(nameOf(key));
    const QString valueUnits = content->unitsOf(value);
    const Place place = findPlace(file, sectionUnits, keyUnits);
    const QString line = keyUnits + u'=' + valueUnits + QStringLiteral("\r\n");
    if (place.hasKey) {
        const qsizetype length = place.lineEnd - place.valueBegin;
        const QStringView before = QStringView(file).mid(place.valueBegin, length);
        if (before == valueUnits || trimmed(before) == valueUnits)
            return true;
        file.replace(place.valueBegin, length, valueUnits);
    } else if (place.hasSection) {
        addLines(file, place.addAt, line);
    } else {
        addLines(file, file.size(), u'[' + sectionUnits + QStringLiteral("]\r\n") + line);
    }
    return replaceFile(m_path, content->toBytes());
}

QString profileText(const QByteArray &bytes)
{
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : fromWindows1252(bytes);
}

QByteArray toWindows1252(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar c : text) {
        const auto found = std::ranges::find(upperControls, c.unicode());
        if (found != upperControls.end())
            bytes += static_cast<char>(0x80 + (found - upperControls.begin()));
        else
            bytes += c.unicode() < 0x80 || (c.unicode() >= 0xA0 && c.unicode() < 0x100) ? static_cast<char>(c.unicode())
                                                                                        : '?';
    }
    return bytes;
}
