#include "support/Script.h"

#include <QProcess>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QString path(const QString &name)
{
    return QStringLiteral(TAMSORA_DATABASE "/") + name;
}

} // namespace

ScriptEnd runScript(const QString &name, const QStringList &options, const QByteArray &input, const QString &prefix)
{
    QProcess process;
    process.start(u"bash"_s, QStringList{u"-c"_s, prefix + u" exec \"$0\" \"$@\""_s, path(name)} + options);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120'000))
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

bool stopScript(const QString &name, const QStringList &options, const QString &whenSaid, bool kill)
{
    QProcess process;
    process.setChildProcessModifier([] { setpgid(0, 0); });
    process.setReadChannel(QProcess::StandardError);
    process.start(path(name), options);
    process.write("\n");
    process.closeWriteChannel();
    QString said;
    while (!said.contains(whenSaid) && process.waitForReadyRead(60'000))
        said += QString::fromUtf8(process.readAllStandardError());
    const bool inTime = said.contains(whenSaid);
    ::kill(kill ? -pid_t(process.processId()) : pid_t(process.processId()), kill ? SIGKILL : SIGTERM);
    process.waitForFinished();
    return inTime;
}
