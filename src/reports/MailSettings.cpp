#include "reports/MailSettings.h"

#include "app/Errors.h"
#include "app/Settings.h"
#include "reports/MailMessage.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace {

QString setting(const QString &key)
{
    return ReadSetting(u"Mail"_s, key, {});
}

MailSettings::Security securityNamed(const QString &name)
{
    using enum MailSettings::Security;
    static const QHash<QString, MailSettings::Security> names{
        {u""_s, StartTls}, {u"none"_s, None}, {u"starttls"_s, StartTls}, {u"tls"_s, Tls}};
    const auto found = names.find(name.toLower());
    if (found == names.end())
        throw NotDone(u"The settings of the mail server say security="_s + name +
                      u"; none, starttls or tls is known."_s);
    return *found;
}

int usualPort(MailSettings::Security security)
{
    constexpr int smtp = 25;
    constexpr int submission = 587;
    constexpr int smtps = 465;
    switch (security) {
    case MailSettings::Security::None:
        return smtp;
    case MailSettings::Security::StartTls:
        return submission;
    case MailSettings::Security::Tls:
        return smtps;
    }
    return smtp;
}

int portOf(const QString &text, MailSettings::Security security)
{
    if (text.isEmpty())
        return usualPort(security);
    bool isNumber = false;
    const int port = text.toUShort(&isNumber);
    if (!isNumber || port == 0)
        throw NotDone(u"The settings of the mail server say port="_s + text + u", which is no port."_s);
    return port;
}

} // namespace

MailSettings readMailSettings()
{
    MailSettings settings;
    settings.server = setting(u"server"_s);
    settings.security = securityNamed(setting(u"security"_s));
    settings.port = portOf(setting(u"port"_s), settings.security);
    settings.user = setting(u"user"_s);
    settings.password = setting(u"password"_s);
    settings.from = setting(u"from"_s);
    settings.authorities = setting(u"authorities"_s);
    if (!settings.from.isEmpty())
        settings.from = mailAddresses(settings.from).first();
    return settings;
}
