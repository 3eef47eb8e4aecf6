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
constexpr qint16 mostSpecialGroups = 5;
constexpr qint16 mostInt16 = std::numeric_limits<qint16>::max();
constexpr int driverOptions = 18475;
constexpr double mostNote = 1e8; // in cents

QString systemSection()
{
    return u"System"_s;
}

// The section System of one settings file.
struct SystemSection
{
    const QString &file;

    [[nodiscard]] QString text(const QString &key, const QString &defaultValue = {}) const
    {
        return ReadSetting(systemSection(), key, defaultValue, file);
    }
    // A number for which nothing is written into the file when it is missing.
    [[nodiscard]] qint16 optionalNumber(const QString &key, qint16 defaultValue, qint16 least, qint16 most,
                                        const QString &remark = {}) const;
};

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

qint16 SystemSection::optionalNumber(const QString &key, qint16 defaultValue, qint16 least, qint16 most,
                                     const QString &remark) const
{
    const QString value = text(key);
    return value.isEmpty() ? defaultValue : wholeNumber(key, value, least, most, remark);
}

// An unset name is empty, or still the name of its own key.
bool isUnset(const QString &value, const QString &key)
{
    return value.isEmpty() || value == key;
}

void readFieldNames(AppSettings &settings, const SystemSection &system)
{
    const qint16 configured = settings.MaxFieldIndex;
    for (qint16 i = 0; i <= configured; ++i) {
        const QString key = u"pitch"_s + QString::number(i);
        QString &name = settings.FieldNames.at(static_cast<std::size_t>(i));
        name = system.text(key);
        if (isUnset(name, key)) {
            settings.MaxFieldIndex = static_cast<qint16>(i - 1);
            return;
        }
    }
}

void readSharedFields(AppSettings &settings, const QString &file)
{
    for (qint16 i = 0; i <= settings.MaxFieldIndex; ++i) {
        const QString key = u"Shared"_s + QString::number(i);
        QString &pair = settings.SharedFields.at(static_cast<std::size_t>(i));
        pair = ReadSetting(u"Shared"_s, key, {}, file);
        if (isUnset(pair, key)) {
            pair.clear();
            return;
        }
    }
}

void readDisplayNames(AppSettings &settings, const SystemSection &system)
{
    for (qint16 i = 0; i <= settings.MaxFieldIndex; ++i) {
        const QString number = QString::number(i);
        settings.FieldDisplayNames.at(static_cast<std::size_t>(i)) =
            system.text(u"display"_s + number, u"pitch"_s + number);
    }
}

// "5, 10, 0.50" in cents; what stands there already when the key is empty.
void readTillNotes(std::vector<qint64> &notes, const QString &file)
{
    const QString text = ReadSetting(u"Till"_s, u"notes"_s, {}, file);
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

} // namespace

SettingError::SettingError(const QString &section, const QString &key, const QString &value, const QString &expected)
    : std::runtime_error(errorText(section, key, value, expected).toStdString())
{
}

#ifdef Q_OS_WIN

QString settingsFilePath(const QString &fileName)
{
    return QDir(qEnvironmentVariable("SystemRoot")).filePath(fileName);
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
    return QDir(QStandardPaths::writableLocation(QStandardPaths::ConfigLocation)).filePath(fileName);
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

QString connectionString(const AppSettings &settings)
{
    return u"DRIVER={MySQL ODBC 3.51 Driver};SERVER="_s + settings.databaseServer + u";DATABASE=posdb;UID="_s +
           settings.databaseUser + u";PWD="_s + settings.databasePassword + u";OPTION="_s +
           QString::number(driverOptions);
}

AppSettings loadStartupValues(const QString &fileName)
{
    const SystemSection system{fileName};
    AppSettings settings;
    settings.MaxFieldIndex = static_cast<qint16>(system.optionalNumber(u"fields"_s, 1, 1, mostFields) - 1);
    const qint16 court = wholeNumber(u"CourtType"_s, system.text(u"CourtType"_s, u"1"_s), -mostInt16, mostInt16);
    settings.CourtTypeIndex = static_cast<qint16>(court - 1);
    const qint16 counters = system.optionalNumber(u"counters"_s, 1, 1, mostInt16);
    settings.CounterCount = counters;
    settings.ThisCounter =
        system.optionalNumber(u"counter"_s, 1, 1, counters, u", the number of counters (key \"counters\")"_s);
    return settings;
}

void LoadSettings(AppSettings &settings, const QString &fileName)
{
    const SystemSection system{fileName};
    settings.frontPicture = system.text(u"picture_front"_s, u"picture_front"_s);
    settings.logoPicture = system.text(u"picture_logo"_s, u"picture_logo"_s);
    const QString firstHour = system.text(u"hour_start"_s, u"StartOfWorkingHour"_s);
    const QString lastHour = system.text(u"hour_end"_s, u"EndOfWorkingHour"_s);
    settings.databaseServer = system.text(u"database_server"_s, u"localhost"_s);
    settings.databaseUser = system.text(u"database_user"_s);
    settings.databasePassword = system.text(u"database_password"_s);
    settings.webServer = system.text(u"webserver"_s, u"localhost"_s);
    const QString drawerPort = system.text(u"cashdrawercommport"_s, u"2"_s);
    settings.drawerCommand = system.text(u"cashdrawercommand"_s);
    settings.drawerText = system.text(u"cashdrawercomm"_s);
    settings.drawerDevice = system.text(u"cashdrawerdevice"_s);

    settings.firstHour = wholeNumber(u"hour_start"_s, firstHour, 1, 23);
    settings.lastHour =
        wholeNumber(u"hour_end"_s, lastHour, 0, static_cast<qint16>(settings.firstHour - 1),
                    u": the last hour after midnight, before the day starts again (key \"hour_start\")"_s);
    settings.drawerPort =
        wholeNumber(u"cashdrawercommport"_s, drawerPort, std::numeric_limits<qint16>::min(), mostInt16);
    settings.SpecialGroupLimit = system.optionalNumber(u"special_groups"_s, mostSpecialGroups, 0, mostSpecialGroups);
    settings.ConnectionString = connectionString(settings);
    readFieldNames(settings, system);
    readSharedFields(settings, fileName);
    readDisplayNames(settings, system);
    readTillNotes(settings.tillNotes, fileName);
}

PicturePlacement readPicturePlacement(const QString &section, const QString &fileName)
{
    PicturePlacement placement;
    placement.image = ReadSetting(section, u"Image"_s, u"1"_s, fileName);
    const std::array numbers{std::pair{u"Top"_s, &placement.top}, std::pair{u"Left"_s, &placement.left},
                             std::pair{u"Height"_s, &placement.height}, std::pair{u"Width"_s, &placement.width}};
    std::optional<SettingError> error;
    for (const auto &[key, number] : numbers) {
        const QString value = ReadSetting(section, key, u"1"_s, fileName);
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
