#include "reports/MailSender.h"

#include <QPluginLoader>

using namespace Qt::StringLiterals;

bool MailSender::loadCourier()
{
    if (m_courier)
        return true;
    // Looked up beside the program, among other places.
    QPluginLoader loader(u"tamsora_mail"_s);
    auto *plugin = qobject_cast<MailPlugin *>(loader.instance());
    if (plugin)
        m_courier =
            plugin->makeCourier({[this](qint64 sentBytes, qint64 allBytes) { Q_EMIT progressed(sentBytes, allBytes); },
                                 [this] { Q_EMIT sent(); }, [this](const QString &words) { Q_EMIT failed(words); }});
    return plugin != nullptr;
}

void MailSender::send(const MailSettings &settings, const QStringList &to, const QByteArray &text)
{
    if (loadCourier())
        m_courier->send(settings, to, text);
    else
        Q_EMIT failed(u"This counter cannot send mail: the file tamsora_mail is not beside the program."_s);
}

void MailSender::cancel()
{
    if (m_courier)
        m_courier->cancel();
}
