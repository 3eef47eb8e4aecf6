#include "reportserver/ReportSettings.h"

#include "app/Conversions.h"
#include "app/ProfileFile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr int longestValue = 255;
constexpr int mostFields = 16;
constexpr int defaultPort = 8088;
constexpr int mostPort = 65535;

class SettingsReader
{
public:
    explicit SettingsReader(const QString &fileName) : m_fileName(fileName), m_file(fileName)
    {
        if (!QFileInfo(fileName).isReadable())
            throw std::runtime_error(u"The settings file %1 cannot be read."_s.arg(fileName).toStdString());
    }

    [[nodiscard]] QString text(const QString &section, const QString &key) const
    {
        return profileText(m_file.value(section, key, longestValue));
    }

    [[nodiscard]] int number(const QString &section, const QString &key, const QString &missing, int least,
                             int most) const
    {
        const QString given = text(section, key);
        bool isNumber = false;
        const int value = (given.isEmpty() ? missing : given).toInt(&isNumber);
        if (isNumber && value >= least && value <= most)
            return value;
        throw std::runtime_error(
            u"The setting \"%1\" in section [%2] of %3 is \"%4\", but it must be a whole number from %5 to %6."_s
                .arg(key, section, m_fileName, given, QString::number(least), QString::number(most))
                .toStdString());
    }

private:
    QString m_fileName;
    ProfileFile m_file;
};

// Up to the first field without a name, as at the counters.
void readFields(const SettingsReader &reader, AppSettings &centre)
{
    const int fields = reader.number(u"System"_s, u"fields"_s, u"1"_s, 1, mostFields);
    centre.MaxFieldIndex = -1;
    for (int field = 0; field < fields; ++field) {
        const QString number = QString::number(field);
        const QString name = reader.text(u"System"_s, u"pitch"_s + number);
        if (name.isEmpty() || name == u"pitch"_s + number)
            return;
        centre.FieldNames.at(std::size_t(field)) = name;
        centre.FieldDisplayNames.at(std::size_t(field)) = reader.text(u"System"_s, u"display"_s + number);
        centre.MaxFieldIndex = qint16(field);
    }
}

} // namespace

QString ReportSettings::fieldName(int field) const
{
    return field >= 0 && field <= centre.MaxFieldIndex ? centre.fieldName(field)
                                                       : u"Field "_s + QString::number(field + 1);
}

ReportSettings readReportSettings(const QString &fileName)
{
    const SettingsReader reader(fileName);
    const QString system = u"System"_s;
    ReportSettings settings;
    AppSettings &centre = settings.centre;
    centre.firstHour = qint16(reader.number(system, u"hour_start"_s, {}, 1, 23));
    centre.lastHour = qint16(reader.number(system, u"hour_end"_s, {}, 0, centre.firstHour - 1));
    readFields(reader, centre);
    const QString server = reader.text(system, u"database_server"_s);
    centre.ConnectionString = u"SERVER=%1;DATABASE=posdb;UID=%2;PWD=%3"_s.arg(
        server.isEmpty() ? u"localhost"_s : server, reader.text(system, u"database_user"_s),
        reader.text(system, u"database_password"_s));
    settings.centreName = reader.text(u"Address"_s, u"address1"_s);
    settings.listenAddress = reader.text(u"Reports"_s, u"listen"_s);
    if (settings.listenAddress.isEmpty())
        settings.listenAddress = u"127.0.0.1"_s;
    settings.port = reader.number(u"Reports"_s, u"port"_s, QString::number(defaultPort), 0, mostPort);
    return settings;
}
