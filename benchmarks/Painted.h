#pragma once

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QPaintEvent>
#include <QTextStream>
#include <QTimer>
#include <QWidget>

#include <functional>

// What the started windows, the program's and the empty one, share to tell how they fared.

/// Runs the event loop until this window's first picture stands on the screen.
inline void awaitPainted(const std::function<const QWidget *()> &window)
{
    struct Watch : QObject
    {
        std::function<const QWidget *()> window;
        QEventLoop loop;

        bool eventFilter(QObject *watched, QEvent *event) override
        {
            const auto *widget = event->type() == QEvent::Paint ? qobject_cast<QWidget *>(watched) : nullptr;
            // The picture is handed to the screen once all parts have been painted, before the next round of the loop.
            if (widget && widget->window() == window())
                QTimer::singleShot(0, &loop, &QEventLoop::quit);
            return false;
        }
    } watch;
    watch.window = window;
    qApp->installEventFilter(&watch);
    watch.loop.exec();
}

inline void tellPainted(const QWidget &window, double milliseconds)
{
    QTextStream(stdout) << window.width() << ' ' << window.height() << ' ' << milliseconds << Qt::endl;
}

/// Tells the most memory that this process ever held, in KiB, once it has come to rest.
inline void tellPeakMemory()
{
    constexpr int restMilliseconds = 300;
    QEventLoop loop;
    QTimer::singleShot(restMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return;
    const auto lines = status.readAll().split('\n');
    for (const QByteArray &line : lines)
        if (line.startsWith("VmHWM:"))
            QTextStream(stdout) << line.mid(6).trimmed().split(' ').front() << Qt::endl;
}
