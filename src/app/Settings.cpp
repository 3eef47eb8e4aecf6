#include "app/Settings.h"

#include "app/Conversions.h"
#include "app/ProfileFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <limits>

#ifdef Q_OS_WIN
#define NOMINMAX
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr int bufferSize = 255;
constexpr qint16 mostFields = 16;
constexpr qint16 mostInt16 = std::numeric_limits<qint16>::max();
constexpr int driverOptions = 18475;
constexpr double mostNote = 1e8; // in cents

QString systemSection()
{
    return u"System"_s;
}

QString systemText(const QString &key, const QString &defaultValue = {})
{
    return ReadSetting(systemSection(), key, defaultValue);
}

QString errorText(const QString &section, const QString &key, const QString &value, const QString &expected)
{
    return u"The setting \"%1\" in section [%2] is \"%3\", but it must be %4.\nThe settings file is %5"_s.arg(
        key, section, value, expected, QDir::toNativeSeparators(settingsFilePath()));
}

qint16 wholeNumber(const QString &key, const QString &text, qint16 least, qint16 most, const QString &remark = {})
{
    try {
        const qint16 number = toInt16(text);
        if (number >= least && number <= most)
            return number;
    } catch (const ConversionError &) {
        // Reported below, as a number out of range is.
    }
    const QString expected = u"a whole number from %1 to %2"_s.arg(QString::number(least), QString::number(most));
    throw SettingError(systemSection(), key, text, expected + remark);
}

// A number for which nothing is written into the file when it is missing.
qint16 optionalNumber(const QString &key, qint16 most, const QString &remark = {})
{
    const QString text = systemText(key);
    return text.isEmpty() ? qint16{1} : wholeNumber(key, text, 1, most, remark);
}

// An unset name is empty, or still the name of its own key.
bool isUnset(const QString &value, const QString &key)
{
    return value.isEmpty() || value == key;
}

void readFieldNames(AppSettings &settings)
{
    const qint16 configured = settings.MaxFieldIndex;
    for (qint16 i = 0; i <= configured; ++i) {
        const QString key = u"pitch"_s + QString::number(i);
        QString &name = settings.FieldNames.at(static_cast<std::size_t>(i));
        name = systemText(key);
        if (isUnset(name, key)) {
            settings.MaxFieldIndex = static_cast<qint16>(i - 1);
            return;
        }
    }
}

void readSharedFields(AppSettings &settings)
{
    for (qint16 i = 0; i <= settings.MaxFieldIndex; ++i) {
        const QString key = u"Shared"_s + QString::number(i);
        QString &pair = settings.SharedFields.at(static_cast<std::size_t>(i));
        pair = ReadSetting(u"Shared"_s, key, {});
        if (isUnset(pair, key)) {
            pair.clear();
            return;
        }
    }
}

void readDisplayNames(AppSettings &settings)
{
    for (qint16 i = 0; i <= settings.MaxFieldIndex; ++i) {
        const QString number = QString::number(i);
        settings.FieldDisplayNames.at(static_cast<std::size_t>(i)) =
            systemText(u"display"_s + number, u"pitch"_s + number);
    }
}

// "5, 10, 0.50" in cents; what stands there already when the key is empty.
void readTillNotes(std::vector<qint64> &notes)
{
    const QString text = ReadSetting(u"Till"_s, u"notes"_s, {});
    if (text.isEmpty())
        return;
    notes.clear();
    for (const QString &note : text.split(u',')) {
        double cents = 0;
        try {
            cents = 100 * toDouble(note);
        } catch (const ConversionError &) {
            // Reported below, as an amount out of range is.
        }
        if (cents < 1 || cents > mostNote)
            throw SettingError(u"Till"_s, u"notes"_s, text, u"amounts above 0 with commas between them, as 5,10,20"_s);
        notes.push_back(std::llround(cents));
    }
    std::ranges::sort(notes);
}

QString connectionString(const AppSettings &settings)
{
    return u"DRIVER={MySQL ODBC 3.51 Driver};SERVER="_s + settings.databaseServer + u";DATABASE=posdb;UID="_s +
           settings.databaseUser + u";PWD="_s + settings.databasePassword + u";OPTION="_s +
           QString::number(driverOptions);
}

} // namespace

SettingError::SettingError(const QString &section, const QString &key, const QString &value, const QString &expected)
    : std::runtime_error(errorText(section, key, value, expected).toStdString())
{
}

#ifdef Q_OS_WIN

QString settingsFilePath(const QString &fileName)
{
    return qEnvironmentVariable("SystemRoot") + u'/' + fileName;
}

QString ReadSetting(const QString &section, const QString &key, const QString &defaultValue, const QString &fileName)
{
    QByteArray buffer(bufferSize, '\0');
    const DWORD length = GetPrivateProfileStringA(section.toLocal8Bit(), key.toLocal8Bit(), "", buffer.data(),
                                                  bufferSize, fileName.toLocal8Bit());
    if (length != 0)
        return QString::fromLocal8Bit(buffer.constData());
    if (!defaultValue.isEmpty())
        WriteSetting(section, key, defaultValue, fileName);
    return defaultValue;
}

bool WriteSetting(const QString &section, const QString &key, const QString &value, const QString &fileName)
{
    return WritePrivateProfileStringA(section.toLocal8Bit(), key.toLocal8Bit(), value.toLocal8Bit(),
                                      fileName.toLocal8Bit()) != 0;
}

#else

QString settingsFilePath(const QString &fileName)
{
    return QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) + u'/' + fileName;
}

QString ReadSetting(const QString &section, const QString &key, const QString &defaultValue, const QString &fileName)
{
    const QByteArray value = ProfileFile(settingsFilePath(fileName)).value(section, key, bufferSize);
    if (!value.isEmpty())
        return profileText(QByteArray(value.constData())); // up to the first NUL
    if (!defaultValue.isEmpty())
        WriteSetting(section, key, defaultValue, fileName);
    return defaultValue;
}

bool WriteSetting(const QString &section, const QString &key, const QString &value, const QString &fileName)
{
    const QString path = settingsFilePath(fileName);
    return QDir().mkpath(QFileInfo(path).path()) && ProfileFile(path).write(section, key, value);
}

#endif

QString AppSettings::fieldName(int field) const
{
    for (const auto *names : {&FieldDisplayNames, &FieldNames}) {
        const QString name = names->at(std::size_t(field));
        if (!name.isEmpty())
            return name;
    }
    return u"Field "_s + QString::number(field + 1);
}

std::vector<QString> AppSettings::namesOfFields() const
{
    std::vector<QString> names;
    for (int field = 0; field <= MaxFieldIndex; ++field)
        names.push_back(fieldName(field));
    return names;
}

AppSettings loadStartupValues()
{
    AppSettings settings;
    settings.MaxFieldIndex = static_cast<qint16>(optionalNumber(u"fields"_s, mostFields) - 1);
    const qint16 court = wholeNumber(u"CourtType"_s, systemText(u"CourtType"_s, u"1"_s), -mostInt16, mostInt16);
    settings.CourtTypeIndex = static_cast<qint16>(court - 1);
    const qint16 counters = optionalNumber(u"counters"_s, mostInt16);
    settings.CounterCount = counters;
    settings.ThisCounter = optionalNumber(u"counter"_s, counters, u", the number of counters (key \"counters\")"_s);
    return settings;
}

void LoadSettings(AppSettings &settings)
{
    settings.frontPicture = systemText(u"picture_front"_s, u"picture_front"_s);
    settings.logoPicture = systemText(u"picture_logo"_s, u"picture_logo"_s);
    const QString firstHour = systemText(u"hour_start"_s, u"StartOfWorkingHour"_s);
    const QString lastHour = systemText(u"hour_end"_s, u"EndOfWorkingHour"_s);
    settings.databaseServer = systemText(u"database_server"_s, u"localhost"_s);
    settings.databaseUser = systemText(u"database_user"_s);
    settings.databasePassword = systemText(u"database_password"_s);
    settings.webServer = systemText(u"webserver"_s, u"localhost"_s);
    const QString drawerPort = systemText(u"cashdrawercommport"_s, u"2"_s);
    settings.drawerCommand = systemText(u"cashdrawercommand"_s);
    settings.drawerText = systemText(u"cashdrawercomm"_s);
    settings.drawerDevice = systemText(u"cashdrawerdevice"_s);

    settings.firstHour = wholeNumber(u"hour_start"_s, firstHour, 1, 23);
    settings.lastHour =
        wholeNumber(u"hour_end"_s, lastHour, 0, static_cast<qint16>(settings.firstHour - 1),
                    u": the last hour after midnight, before the day starts again (key \"hour_start\")"_s);
    settings.drawerPort =
        wholeNumber(u"cashdrawercommport"_s, drawerPort, std::numeric_limits<qint16>::min(), mostInt16);
    settings.ConnectionString = connectionString(settings);
    readFieldNames(settings);
    readSharedFields(settings);
    readDisplayNames(settings);
    readTillNotes(settings.tillNotes);
}

PicturePlacement readPicturePlacement(const QString &section)
{
    PicturePlacement placement;
    placement.image = ReadSetting(section, u"Image"_s, u"1"_s);
    const std::array numbers{std::pair{u"Top"_s, &placement.top}, std::pair{u"Left"_s, &placement.left},
                             std::pair{u"Height"_s, &placement.height}, std::pair{u"Width"_s, &placement.width}};
    std::optional<SettingError> error;
    for (const auto &[key, number] : numbers) {
        const QString value = ReadSetting(section, key, u"1"_s);
        try {
            *number = toDouble(value);
        } catch (const ConversionError &) {
            if (!error)
                error.emplace(section, key, value, u"a number"_s);
        }
    }
    if (error)
        throw *error;
    return placement;
}

std::optional<std::array<double, 4>> readHotSpot(const QString &section, int n)
{
    const QStringList texts = ReadSetting(section, u"Coord"_s + QString::number(n), u"1"_s).split(u',');
    std::array<double, 4> corners{};
    if (texts.size() != static_cast<qsizetype>(corners.size()))
        return std::nullopt;
    try {
        for (std::size_t i = 0; i < corners.size(); ++i)
            corners.at(i) = toDouble(texts[static_cast<qsizetype>(i)]);
    } catch (const ConversionError &) {
        return std::nullopt;
    }
    return corners;
}
