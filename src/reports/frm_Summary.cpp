#include "reports/frm_Summary.h"

#include "app/Errors.h"
#include "app/ReportAddress.h"
#include "look/WrappedLabel.h"

#include <QBoxLayout>
#include <QDesktopServices>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>
#include <QStackedWidget>

#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto fetchPatience = 10s;
constexpr int pollMilliseconds = 30;
constexpr QSize wantedSize{1080, 720};

} // namespace

frm_Summary::frm_Summary(Station &station, const QString &day, QWidget *parent)
    : frm_Summary(station, u"Booking Summary for "_s + day, QUrl(ReportAddress::ofBookings(station.settings, day)),
                  parent)
{
}

frm_Summary::frm_Summary(Station &station, const QString &title, const QUrl &address, QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_firstAddress(address),
      m_firstTitle(title),
      m_address(address),
      m_shown(new QStackedWidget),
      m_note(wrappedLabel(u"lbl_Note"_s, {}, 1.2))
{
    setObjectName(u"frm_Summary"_s);
    setWindowTitle(title);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_note->setAlignment(Qt::AlignCenter);
    m_shown->addWidget(m_note);
    m_fetching.setInterval(pollMilliseconds);
    connect(&m_fetching, &QTimer::timeout, this,
            [this] { guarded(m_station.prompts, ErrorCode::Unknown, [this] { lookForPage(); }); });
    layOut();
    resize(wantedSize.boundedTo(screen()->availableSize() - QSize(32, 64)));
}

frm_Summary::~frm_Summary() = default;

void frm_Summary::layOut()
{
    m_retry = addButton(u"btn_Retry"_s, u"&Try again"_s, u"Asks the report server for the page once more."_s,
                        &frm_Summary::load);
    m_retry->hide();
    m_mail = addButton(u"btn_Mail"_s, u"&Mail…"_s, u"Sends this report by mail."_s, &frm_Summary::mail);
    m_print = addButton(u"btn_Print"_s, u"&Print…"_s, u"Prints this report on a printer of your choice."_s,
                        &frm_Summary::print);
    QPushButton *close = addButton(u"btn_Close"_s, u"&Close"_s, u"Closes this window."_s, &frm_Summary::reject);
    close->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_retry);
    buttons->addStretch();
    for (QPushButton *button : {m_mail, m_print, close})
        buttons->addWidget(button);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setSpacing(8);
    layout->addWidget(m_shown, 1);
    layout->addLayout(buttons);
    close->setFocus();
}

QPushButton *frm_Summary::addButton(const QString &name, const QString &text, const QString &tip,
                                    void (frm_Summary::*action)())
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this,
            [this, action] { guarded(m_station.prompts, ErrorCode::LoadingForm, [&] { (this->*action)(); }); });
    return button;
}

void frm_Summary::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_isLoaded || event->spontaneous())
        return;
    m_isLoaded = true;
    // Queued, so that the window stands before the browser begins.
    QMetaObject::invokeMethod(
        this, [this] { guarded(m_station.prompts, ErrorCode::LoadingForm, [this] { openBrowser(); }); },
        Qt::QueuedConnection);
    tell(u"Asking the report server …"_s);
}

std::unique_ptr<BrowserView> frm_Summary::makeBrowser()
{
    BrowserPlugin *plugin = BrowserPlugin::load();
    return plugin ? plugin->makeView(this) : nullptr;
}

void frm_Summary::openBrowser()
{
    m_browser = makeBrowser();
    if (m_browser) {
        QWidget *view = m_browser->widget();
        view->setObjectName(u"WebBrowser"_s);
        view->setAccessibleName(u"Report"_s);
        m_shown->addWidget(view);
    }
    m_print->setEnabled(m_browser != nullptr);
    load();
}

void frm_Summary::load()
{
    m_retry->hide();
    if (!m_browser) {
        openOutside();
        return;
    }
    tell(u"Asking the report server …"_s);
    m_browser->load(m_address, [this](bool came) { showResult(came); });
}

void frm_Summary::openOutside()
{
    if (QDesktopServices::openUrl(m_address)) {
        tell(u"This counter has no browser of its own. The report was opened in the system's browser."_s);
        m_retry->setText(u"&Open again"_s);
    } else {
        tell(u"This counter has no browser of its own, and the system opened none. The report is at %1"_s.arg(
            m_address.toString()));
    }
    m_retry->show();
}

void frm_Summary::showResult(bool came)
{
    m_address = m_browser->address();
    if (came)
        setWindowTitle(m_address == m_firstAddress ? m_firstTitle : m_browser->title());
    m_retry->setVisible(!came);
    m_mail->setEnabled(came);
    m_print->setEnabled(came);
    if (came)
        m_shown->setCurrentWidget(m_browser->widget());
    else
        tell(u"The report server at %1 cannot show this report now."_s.arg(m_address.authority()));
}

void frm_Summary::tell(const QString &words)
{
    m_note->setText(words);
    m_shown->setCurrentWidget(m_note);
}

void frm_Summary::print()
{
    if (!m_browser || m_printer)
        return;
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(windowTitle());
    QPrintDialog dialog(printer.get(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_printer = std::move(printer);
    m_print->setEnabled(false);
    m_browser->print(*m_printer, [this](bool isPrinted) { printed(isPrinted); });
}

void frm_Summary::printed(bool isPrinted)
{
    m_printer.reset();
    m_print->setEnabled(true);
    if (!isPrinted)
        m_station.prompts.refuse(u"The report could not be printed."_s);
}

// The page is fetched once more, so that what is sent is what the server says, whatever browser shows it.
void frm_Summary::mail()
{
    m_mail->setEnabled(false);
    m_mailSubject = windowTitle();
    std::packaged_task<FetchedPage()> task(
        [address = m_address.toString(QUrl::FullyEncoded)] { return fetchPage(address, fetchPatience); });
    m_fetched = task.get_future();
    std::thread(std::move(task)).detach(); // it touches nothing of this window, which may be gone by then
    m_fetching.start();
}

void frm_Summary::lookForPage()
{
    if (m_fetched.wait_for(0s) != std::future_status::ready)
        return;
    m_fetching.stop();
    m_mail->setEnabled(true);
    const FetchedPage page = m_fetched.get();
    if (const auto *failure = std::get_if<FetchFailure>(&page))
        m_station.prompts.refuse(failure->words);
    else
        Q_EMIT mailWanted(std::get<QByteArray>(page), m_mailSubject);
}
