#include "counter/SystemPrinters.h"

#include "counter/PrinterState.h"
#include "counter/ReceiptPainter.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceWithPrinter = 30'000; // milliseconds, all of them
constexpr int patienceWithSystem = 5000;
constexpr int patienceAtEnd = 3000;
constexpr int timeToPrint = 20'000;
constexpr int timeOfTrouble = 8000; // a printer that wakes up may say that it is not connected
constexpr int betweenLooks = 500;

QString named(const QString &printer)
{
    return u"The printer \""_s + printer + u"\" "_s;
}

// What keeps the printer from printing what it was given.
QString troubleAfter(const QString &name)
{
    PrinterState state;
    QElapsedTimer time;
    time.start();
    do {
        QThread::msleep(betweenLooks);
        state = PrinterState::of(name);
    } while (state.isThere && state.takesJobs && (!state.isIdle || !state.trouble.isEmpty()) &&
             time.elapsed() < (state.trouble.isEmpty() ? timeToPrint : timeOfTrouble) &&
             !QThread::currentThread()->isInterruptionRequested());
    const QString later = u" The receipt waits for it and is printed when it is ready."_s;
    if (!state.isThere || !state.takesJobs)
        return named(name) + u"has stopped."_s + later;
    if (!state.trouble.isEmpty())
        return named(name) + state.trouble + u'.' + later;
    return state.isIdle ? QString() : named(name) + u"has not printed yet. Is it switched on and connected?"_s + later;
}

QString printOn(const Receipt &receipt, const PrinterChoice &choice)
{
    if (!choice.name.isEmpty()) {
        const PrinterState state = PrinterState::of(choice.name);
        if (!state.isThere)
            return named(choice.name) + u"is not there any more."_s;
        if (!state.takesJobs)
            return named(choice.name) + u"is paused or has stopped. Nothing was sent to it."_s;
    }
    std::shared_ptr<QPrinter> printer = choice.printer;
    if (!printer)
        printer = std::make_shared<QPrinter>(QPrinterInfo::printerInfo(choice.name), QPrinter::HighResolution);
    printer->setDocName(receipt.title + u' ' + receipt.number);
    const Paper paper = choice.paper.value_or(paperFor(printer->pageLayout().pageSize()));
    if (!printer->isValid() || !paintReceipt(receipt, paper, *printer))
        return choice.name.isEmpty() ? u"The file could not be written."_s
                                     : named(choice.name) + u"did not take the receipt."_s;
    return choice.name.isEmpty() ? QString() : troubleAfter(choice.name);
}

} // namespace

SystemPrinters::~SystemPrinters()
{
    *m_isHere = false;
    const QDeadlineTimer end(patienceAtEnd);
    for (QThread *thread : std::as_const(m_threads))
        thread->requestInterruption();
    for (QThread *thread : std::as_const(m_threads))
        thread->wait(end);
}

template <typename Result>
void SystemPrinters::runAside(std::function<Result()> work, int patience, Result late, std::function<void(Result)> told)
{
    // Whoever is first, the work or the timer, tells.
    const auto tell = [told = std::move(told), isTold = std::make_shared<bool>(false),
                       isHere = m_isHere](const Result &result) {
        if (*isHere && !std::exchange(*isTold, true))
            told(result);
    };
    QThread *thread = QThread::create([work = std::move(work), tell] {
        const Result result = work();
        if (QObject *application = QCoreApplication::instance())
            QMetaObject::invokeMethod(application, [=] { tell(result); });
    });
    QTimer::singleShot(patience, this, [=] { tell(late); });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    connect(thread, &QThread::finished, this, [this, thread] { m_threads.removeOne(thread); });
    m_threads.append(thread);
    thread->start();
}

void SystemPrinters::lookForPrinters(std::function<void(std::optional<bool>)> told)
{
    runAside<std::optional<bool>>([] { return !QPrinterInfo::availablePrinterNames().isEmpty(); }, patienceWithSystem,
                                  std::nullopt, std::move(told));
}

std::optional<PrinterChoice> SystemPrinters::choose(QWidget *over)
{
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    QPrintDialog dialog(printer.get(), over);
    dialog.setObjectName(u"frm_Printer"_s);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    PrinterChoice choice{printer->printerName(), {}, printer};
    const QPageSize page = printer->pageLayout().pageSize();
    if (!page.isEquivalentTo(QPrinterInfo(*printer).defaultPageSize()))
        choice.paper = paperFor(page);
    if (printer->outputFormat() == QPrinter::PdfFormat)
        choice.name.clear();
    return choice;
}

void SystemPrinters::print(const Receipt &receipt, const PrinterChoice &choice,
                           std::function<void(QString trouble)> told)
{
    runAside<QString>([=] { return printOn(receipt, choice); }, patienceWithPrinter,
                      named(choice.name) + u"does not answer. The receipt may still come."_s, std::move(told));
}

QString SystemPrinters::askForFile(QWidget *over, const QString &suggestion)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileDialog::getSaveFileName(over, u"Save as PDF"_s, folder + u'/' + suggestion, u"PDF (*.pdf)"_s);
}
