#include "StartedWindows.h"

#include "Painted.h"
#include "Program.h"
#include "app/frm_Login.h"
#include "schedule/frm_Main.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMilliseconds = 30'000;
constexpr double kibOfMib = 1024;

QByteArrayList lineOf(QProcess &process)
{
    while (!process.canReadLine())
        if (!process.waitForReadyRead(patienceMilliseconds))
            throw std::runtime_error("A started window did not tell how it fared: " +
                                     process.readAllStandardError().toStdString());
    return process.readLine().trimmed().split(' ');
}

QString sizeIn(const QByteArrayList &words)
{
    return QString::fromLatin1(words.value(0) + 'x' + words.value(1));
}

} // namespace

StartedWindows StartedWindows::run(const QString &program, const QStringList &arguments, int windows)
{
    StartedWindows told;
    QProcess process;
    QByteArrayList words;
    told.start = milliseconds([&] {
        process.start(program, arguments);
        words = lineOf(process);
    });
    told.firstSize = sizeIn(words);
    if (windows > 1) {
        words = lineOf(process);
        told.second = words.value(2).toDouble();
        told.secondSize = sizeIn(words);
    }
    told.peakMemory = lineOf(process).value(0).toDouble() / kibOfMib;
    process.waitForFinished(patienceMilliseconds);
    return told;
}

int showProgram(const QString &login, const QString &password)
{
    Program program;
    if (!program.start())
        return 1;
    awaitPainted([&] { return program.loginWindow(); });
    tellPainted(*program.loginWindow(), 0);
    program.loginWindow()->findChild<QLineEdit *>(u"txtLogin"_s)->setText(login);
    program.loginWindow()->findChild<QLineEdit *>(u"txtPassword"_s)->setText(password);
    QElapsedTimer timer;
    timer.start();
    program.loginWindow()->findChild<QPushButton *>(u"btn_GO"_s)->click();
    awaitPainted([&] { return program.mainWindow(); });
    tellPainted(*program.mainWindow(), double(timer.nsecsElapsed()) / 1e6);
    tellPeakMemory();
    return 0;
}
