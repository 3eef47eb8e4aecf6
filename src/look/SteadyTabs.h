#pragma once

#include <QEvent>
#include <QTabBar>
#include <QTabWidget>

/// Tabs that stay as they are when a text on one of their pages wants more or less room. QTabWidget paints itself and
/// all of the page anew then, with a clock on it every second.
class SteadyTabs : public QTabWidget
{
public:
    using QTabWidget::QTabWidget;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::LayoutRequest)
            return QTabWidget::event(event);
        const QSize tabs = tabBar()->sizeHint();
        if (tabs != m_tabs) {
            m_tabs = tabs;
            return QTabWidget::event(event);
        }
        updateGeometry();
        return true;
    }

private:
    QSize m_tabs; ///< as they were laid out
};
