#include "app/Settings.h"
#include "reportserver/ReportServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

ReportServer *serving = nullptr;

void endServing(int /*signal*/)
{
    serving->stop();
}

ReportSettings settingsFrom(const QCommandLineParser &options)
{
    ReportSettings settings = readReportSettings(options.value(u"config"_s));
    if (options.isSet(u"listen"_s))
        settings.listenAddress = options.value(u"listen"_s);
    if (options.isSet(u"port"_s)) {
        bool isNumber = false;
        settings.port = options.value(u"port"_s).toUShort(&isNumber);
        if (!isNumber)
            throw std::runtime_error("--port takes a number from 0 to 65535; 0 is any free port.");
    }
    return settings;
}

int serve(const ReportSettings &settings)
{
    ReportServer server(settings);
    const int port = server.bind();
    if (port == 0)
        throw std::runtime_error(u"Nothing can listen on %1, port %2: is another program there?"_s
                                     .arg(settings.listenAddress, QString::number(settings.port))
                                     .toStdString());
    serving = &server;
    std::signal(SIGTERM, &endServing);
    std::signal(SIGINT, &endServing);
    const bool isIpv6 = settings.listenAddress.contains(u':');
    std::printf("Reports are at http://%s:%d/\n",
                qPrintable(isIpv6 ? u'[' + settings.listenAddress + u']' : settings.listenAddress), port);
    std::fflush(stdout);
    server.serve();
    std::signal(SIGTERM, SIG_IGN);
    std::signal(SIGINT, SIG_IGN);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"tamsora_reports"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(TAMSORA_VERSION));
    QCommandLineParser options;
    options.setApplicationDescription(u"Serves the report pages of a sports centre. Its database account needs to read "
                                      "only."_s);
    options.addHelpOption();
    options.addVersionOption();
    options.addOption({u"config"_s, u"The settings, in the form of a counter's."_s, u"file"_s, settingsFilePath()});
    options.addOption(
        {u"listen"_s, u"The address to listen on, instead of the settings' (127.0.0.1)."_s, u"address"_s});
    options.addOption({u"port"_s, u"The port, instead of the settings' (8088); 0 takes a free one."_s, u"number"_s});
    options.process(application);
    try {
        return serve(settingsFrom(options));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
