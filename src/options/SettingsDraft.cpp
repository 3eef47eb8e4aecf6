#include "options/SettingsDraft.h"

#include "app/ActivityLog.h"
#include "app/Errors.h"
#include "app/SharedFields.h"
#include "app/SqlText.h"
#include "app/Station.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostBytes = 254;
constexpr qsizetype longestLine = 240; // of the log

// What the reader takes off would be lost.
bool losesItsEnds(const QString &value)
{
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t' || c == u'\v'; };
    return !value.isEmpty() && (isBlank(value.front()) || isBlank(value.back()));
}

bool isInQuotes(const QString &value)
{
    return value.size() > 1 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front();
}

QString pathInWords()
{
    return QDir::toNativeSeparators(settingsFilePath());
}

// As it stood in the file, where blanks at its ends were kept by quotes.
bool putBack(const QString &section, const QString &key, const QString &value)
{
    const bool needsQuotes = losesItsEnds(value) || isInQuotes(value);
    return WriteSetting(section, key, needsQuotes ? u'"' + value + u'"' : value);
}

// A copy with the same rights: it holds the password.
bool copyFile(const QString &from, const QString &to)
{
    QFile::remove(to);
    return (!QFileInfo::exists(from) || QFile::copy(from, to)) &&
           (!QFileInfo::exists(to) || QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner));
}

bool isPicture(const QString &section)
{
    return QStringList{u"Layout"_s, u"TopHeader"_s, u"WaitingList"_s}.contains(section);
}

} // namespace

QString whyNotInFile(const QString &value)
{
    if (value.contains(u'\n') || value.contains(u'\r') || value.contains(QChar(u'\0')))
        return u"has a line break or a zero byte in it, which the settings file cannot hold"_s;
    if (value.toUtf8().size() > mostBytes)
        return u"is longer than the 254 bytes that the settings file holds (it has %1)"_s.arg(value.toUtf8().size());
    if (losesItsEnds(value))
        return u"begins or ends with a blank, which the settings file does not keep"_s;
    if (isInQuotes(value))
        return u"stands in quotes, which the settings file does not keep"_s;
    return {};
}

void SettingsDraft::set(const QString &section, const QString &key, const QString &value)
{
    if (const QString before = ReadSetting(section, key, {}); before != value)
        m_changes.push_back({section, key, value, before});
}

void SettingsDraft::tell(const QString &name, const QString &before, const QString &after)
{
    const auto inWords = [](const QString &value) { return value.isEmpty() ? u"(nothing)"_s : value; };
    if (before != after)
        m_lines << name + u' ' + inWords(before) + u" to "_s + inWords(after);
}

void SettingsDraft::tellChanged(const QString &name)
{
    m_lines << name + u" changed"_s;
}

QString SettingsDraft::wordsOf(const Change &change) const
{
    return u"The value of \"%1\" in section [%2] "_s.arg(change.key, change.section);
}

QString SettingsDraft::refusal() const
{
    for (const Change &change : m_changes)
        if (const QString reason = whyNotInFile(change.value); !reason.isEmpty())
            return wordsOf(change) + reason + u'.';
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"tamsora.ini"_s);
    if (!folder.isValid() || !copyFile(settingsFilePath(), copy))
        return u"The settings file %1 cannot be read."_s.arg(pathInWords());
    return refusalOfCopy(copy);
}

QString SettingsDraft::refusalOfCopy(const QString &copy) const
{
    for (const Change &change : m_changes)
        if (!WriteSetting(change.section, change.key, change.value, copy) ||
            ReadSetting(change.section, change.key, {}, copy) != change.value)
            return wordsOf(change) + u"has signs in it that the settings file cannot hold."_s;
    try {
        AppSettings settings = loadStartupValues(copy);
        LoadSettings(settings, copy);
        const SharedFields pairs(settings);
        for (const Change &change : m_changes)
            if (isPicture(change.section))
                readPicturePlacement(change.section, copy);
    } catch (const SettingError &error) {
        return QString::fromUtf8(error.what()).section(u'\n', 0, 0); // without the copy's place
    }
    return {};
}

void SettingsDraft::write() const
{
    for (std::size_t i = 0; i < m_changes.size(); ++i) {
        if (WriteSetting(m_changes[i].section, m_changes[i].key, m_changes[i].value))
            continue;
        QStringList left;
        while (i-- > 0)
            if (!putBack(m_changes[i].section, m_changes[i].key, m_changes[i].before))
                left << u'[' + m_changes[i].section + u"] "_s + m_changes[i].key;
        throw NotDone(
            u"The settings file %1 cannot be written. "_s.arg(pathInWords()) +
            (left.isEmpty() ? u"Nothing was changed."_s : u"These are changed all the same: "_s + left.join(u", "_s)));
    }
}

bool saveDraft(Station &station, const QString &administrator, const SettingsDraft &draft)
{
    if (const QString refusal = draft.refusal(); !refusal.isEmpty()) {
        station.prompts.refuse(refusal);
        return false;
    }
    draft.write();
    for (const QString &line : draft.lines())
        logOption(station, administrator, line);
    return true;
}

void logOption(Station &station, const QString &administrator, const QString &what)
{
    // Within a statement the server takes a backslash for itself.
    const QString line = (u"options: "_s + what).left(longestLine).replace(u'\\', u'/');
    WriteActivityLog(station, quoted(administrator), quoted(line));
}

void copySettingsFor(int counter, const QString &path)
{
    const QString file = QFileInfo(path).absoluteFilePath();
    if (file == QFileInfo(settingsFilePath()).absoluteFilePath())
        throw NotDone(u"This is the file of this counter itself. Choose another folder or name."_s);
    // Beside it until it is whole: it holds the password of the database, and an older one is not lost to half a copy.
    const QString part = file + u".part"_s;
    const auto gone = qScopeGuard([&] { QFile::remove(part); });
    const QString number = QString::number(counter);
    const bool isWritten = copyFile(settingsFilePath(), part) &&
                           WriteSetting(u"System"_s, u"counter"_s, number, part) &&
                           ReadSetting(u"System"_s, u"counter"_s, {}, part) == number;
    if (!isWritten)
        throw NotDone(u"%1 cannot be written."_s.arg(QDir::toNativeSeparators(file)));
    try {
        AppSettings settings = loadStartupValues(part);
        LoadSettings(settings, part);
    } catch (const SettingError &error) {
        throw NotDone(QString::fromUtf8(error.what()).section(u'\n', 0, 0));
    }
    if ((QFile::exists(file) && !QFile::remove(file)) || !QFile::rename(part, file))
        throw NotDone(u"%1 cannot be written."_s.arg(QDir::toNativeSeparators(file)));
}
