#pragma once

#include "reports/Browser.h"

#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>

/// Refuses whatever a page wants of other hosts.
class HostGuard : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    void setHome(const QUrl &home) { m_home = home; }
    [[nodiscard]] bool isHome(const QUrl &address) const;
    void interceptRequest(QWebEngineUrlRequestInfo &info) override;

private:
    QUrl m_home;
};

/// A page that does not leave its host: a link elsewhere opens in the system's browser.
class HomePage : public QWebEnginePage
{
    Q_OBJECT

public:
    HomePage(QWebEngineProfile &profile, const HostGuard &guard);

    /// What was asked for last: the browser itself forgets a page that did not come.
    [[nodiscard]] QUrl asked() const { return m_asked; }

protected:
    bool acceptNavigationRequest(const QUrl &address, NavigationType type, bool isMainFrame) override;
    /// What wants a window of its own is shown in this one.
    QWebEnginePage *createWindow(WebWindowType /*type*/) override { return this; }

private:
    const HostGuard &m_guard;
    QUrl m_asked;
};

class EmbeddedBrowser : public QObject, public BrowserView
{
    Q_OBJECT

public:
    explicit EmbeddedBrowser(QWidget *parent);

    [[nodiscard]] QWidget *widget() override { return m_view.get(); }
    void load(const QUrl &address, std::function<void(bool)> ended) override;
    [[nodiscard]] QUrl address() const override { return m_page.asked(); }
    [[nodiscard]] QString title() const override { return m_page.title(); }
    void print(QPrinter &printer, std::function<void(bool)> done) override;

private:
    // In this order: the view goes first, and the profile last.
    HostGuard m_guard;
    QWebEngineProfile m_profile; ///< without a name: nothing of it is kept
    HomePage m_page;
    std::unique_ptr<QWebEngineView> m_view;
    std::function<void(bool)> m_ended;
    std::function<void(bool)> m_printed;
};

class EmbeddedBrowserPlugin : public QObject, public BrowserPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID BrowserPlugin_iid)
    Q_INTERFACES(BrowserPlugin)

public:
    EmbeddedBrowserPlugin();
    [[nodiscard]] std::unique_ptr<BrowserView> makeView(QWidget *parent) override;
};
