#include "reports/browser/EmbeddedBrowser.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QOpenGLContext>
#include <QPrinter>
#include <QQuickWindow>
#include <QWebEngineSettings>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

QT_BEGIN_NAMESPACE
// What Qt's own browser library calls when it is loaded before the application is made.
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext *context);
QT_END_NAMESPACE

bool HostGuard::isHome(const QUrl &address) const
{
    return address.scheme() == m_home.scheme() && address.host() == m_home.host() && address.port() == m_home.port();
}

void HostGuard::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    if (!isHome(info.requestUrl()) && info.requestUrl().scheme() != u"data")
        info.block(true);
}

HomePage::HomePage(QWebEngineProfile &profile, const HostGuard &guard) : QWebEnginePage(&profile), m_guard(guard) {}

bool HomePage::acceptNavigationRequest(const QUrl &address, NavigationType type, bool isMainFrame)
{
    if (m_guard.isHome(address)) {
        if (isMainFrame)
            m_asked = address;
        return true;
    }
    if (address == QUrl(u"about:blank"_s))
        return true;
    static const QStringList opened{u"http"_s, u"https"_s, u"mailto"_s};
    if (isMainFrame && type == NavigationTypeLinkClicked && opened.contains(address.scheme()))
        QDesktopServices::openUrl(address);
    return false;
}

EmbeddedBrowser::EmbeddedBrowser(QWidget *parent)
    : m_page(m_profile, m_guard), m_view(std::make_unique<QWebEngineView>(parent))
{
    m_profile.setHttpCacheType(QWebEngineProfile::NoCache);
    m_profile.setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    m_profile.setUrlRequestInterceptor(&m_guard);
    QWebEngineSettings *settings = m_page.settings();
    settings->setAttribute(QWebEngineSettings::ErrorPageEnabled, false); // the window has a sentence of its own
    settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    settings->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, false);
    m_view->setPage(&m_page);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    connect(&m_page, &QWebEnginePage::loadFinished, this, [this](bool came) {
        if (m_ended)
            m_ended(came);
    });
    connect(m_view.get(), &QWebEngineView::printFinished, this, [this](bool printed) {
        if (const auto done = std::exchange(m_printed, {}))
            done(printed);
    });
}

void EmbeddedBrowser::load(const QUrl &address, std::function<void(bool)> ended)
{
    m_guard.setHome(address);
    m_ended = std::move(ended);
    m_page.load(address);
}

void EmbeddedBrowser::print(QPrinter &printer, std::function<void(bool)> done)
{
    m_printed = std::move(done);
    m_view->print(&printer);
}

namespace {

void takeContextBack()
{
    delete QOpenGLContext::globalShareContext();
    qt_gl_set_global_share_context(nullptr);
}

// The browser's library asks the context that all share for its form, but draws nothing with it.
void giveContext()
{
    if (QOpenGLContext::globalShareContext())
        return;
    qt_gl_set_global_share_context(new QOpenGLContext);
    qAddPostRoutine(&takeContextBack);
}

} // namespace

EmbeddedBrowserPlugin::EmbeddedBrowserPlugin()
{
    // Reports are plain pages: painted by the processor they look the same on every counter's computer, and the program
    // needs no drawing context from its start on.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    giveContext();
    const QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", (flags + " --disable-gpu").trimmed());
#ifndef Q_OS_WIN
    // As root, on a virtual display, the browser does not start with its sandbox; everywhere else it keeps it.
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
#endif
}

std::unique_ptr<BrowserView> EmbeddedBrowserPlugin::makeView(QWidget *parent)
{
    return std::make_unique<EmbeddedBrowser>(parent);
}
