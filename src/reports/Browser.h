#pragma once

#include <QUrl>
#include <QtPlugin>

#include <functional>
#include <memory>

class QPrinter;
class QWidget;

/// A browser within a window. It stays on the host of the page that it is given, keeps nothing on disk, and hands links
/// to other hosts to the system's browser. It goes before its window does.
class BrowserView
{
public:
    BrowserView() = default;
    BrowserView(const BrowserView &) = delete;
    BrowserView &operator=(const BrowserView &) = delete;
    virtual ~BrowserView() = default;

    [[nodiscard]] virtual QWidget *widget() = 0;
    /// `ended` is called for each load, those of followed links too, with whether the page came.
    virtual void load(const QUrl &address, std::function<void(bool)> ended) = 0;
    /// Of the page that was asked for last, by load() or a link.
    [[nodiscard]] virtual QUrl address() const = 0;
    /// What the shown page calls itself.
    [[nodiscard]] virtual QString title() const = 0;
    /// The printer must live until `done` is called.
    virtual void print(QPrinter &printer, std::function<void(bool)> done) = 0;
};

/// What the plug-in with the browser gives. It is large, so it is loaded when the first window wants it.
class BrowserPlugin
{
public:
    BrowserPlugin() = default;
    BrowserPlugin(const BrowserPlugin &) = delete;
    BrowserPlugin &operator=(const BrowserPlugin &) = delete;
    virtual ~BrowserPlugin() = default;

    [[nodiscard]] virtual std::unique_ptr<BrowserView> makeView(QWidget *parent) = 0;

    /// The one that stands beside the program; nothing when there is none, or it cannot be used here.
    static BrowserPlugin *load();
};

#define BrowserPlugin_iid "tamsora.BrowserPlugin/2"
Q_DECLARE_INTERFACE(BrowserPlugin, BrowserPlugin_iid)
