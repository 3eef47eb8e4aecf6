#pragma once

#include <QString>

#include <array>
#include <optional>
#include <stdexcept>
#include <vector>

// A setting that the program cannot work with. what() is for the centre's operator: section, key, value, what is
// expected and where the file is (UTF-8).
class SettingError : public std::runtime_error
{
public:
    SettingError(const QString &section, const QString &key, const QString &value, const QString &expected);
};

// Start-up's values; filled once by loadStartupValues and LoadSettings, only read afterwards.
struct AppSettings
{
    QString frontPicture;
    QString logoPicture;
    qint16 firstHour = 0; // StartOfWorkingHour, 1..23
    qint16 lastHour = 0;  // EndOfWorkingHour, the last hour after midnight: 0..firstHour - 1
    QString databaseServer;
    QString databaseUser;
    QString databasePassword;
    QString webServer;
    qint16 drawerPort = 0; // 1 = COM1
    QString drawerCommand; // what opens the drawer ("cashdrawercommand")
    QString drawerText;    // line settings of its port, as 9600,N,8,1 ("cashdrawercomm")
    QString drawerDevice;  // path of its port, instead of the number ("cashdrawerdevice"); "none": there is no drawer
    std::vector<qint64> tillNotes{500, 1000, 2000, 5000, 10000}; // banknotes in cents, the smallest first
    QString ConnectionString;
    std::array<QString, 16> FieldNames;
    std::array<QString, 16> FieldDisplayNames;
    std::array<QString, 16> SharedFields; // pairs as 0&1; an empty one ends the list
    qint16 MaxFieldIndex = 0;             // -1: no field
    qint16 CourtTypeIndex = 0;
    qint16 ThisCounter = 1;
    int CounterCount = 1;
    qint16 SpecialGroupLimit = 5; // special groups above it are not looked for

    // How staff call a field: its display name, else its name, else "Field n" counted from 1.
    [[nodiscard]] QString fieldName(int field) const;
    // Of all fields, from field 0.
    [[nodiscard]] std::vector<QString> namesOfFields() const;
};

// The file's text, at most 254 bytes. A missing or empty one is the default, which goes into the file unless it is
// empty.
QString ReadSetting(const QString &section, const QString &key, const QString &defaultValue,
                    const QString &fileName = QStringLiteral("tamsora.ini"));

// False when nothing was written. Makes the folder of the file where it is missing.
bool WriteSetting(const QString &section, const QString &key, const QString &value,
                  const QString &fileName = QStringLiteral("tamsora.ini"));

// Where the bare file name is looked up: the user's configuration directory; on Windows the Windows directory. A path
// stays as it is.
QString settingsFilePath(const QString &fileName = QStringLiteral("tamsora.ini"));

// Number of fields, plan, this counter and number of counters. Throws SettingError.
AppSettings loadStartupValues(const QString &fileName = QStringLiteral("tamsora.ini"));

// Everything else; lowers MaxFieldIndex to the leading run of named fields. Throws SettingError, but only after the
// defaults of a fresh file are in it.
void LoadSettings(AppSettings &settings, const QString &fileName = QStringLiteral("tamsora.ini"));

// For ConnectionString, from the database's server, user and password.
QString connectionString(const AppSettings &settings);

// Where a picture of the main window stands, in the file's own units.
struct PicturePlacement
{
    QString image; // file name, relative to the pictures' folder
    double top = 0;
    double left = 0;
    double height = 0;
    double width = 0;
};

// Throws SettingError for the first of the four that is no number, after the defaults of all five are in the file.
PicturePlacement readPicturePlacement(const QString &section, const QString &fileName = QStringLiteral("tamsora.ini"));

// Left, top, right, bottom of field n's hot spot in the picture's own coordinates; nothing unless there are four
// numbers.
std::optional<std::array<double, 4>> readHotSpot(const QString &section, int n);
