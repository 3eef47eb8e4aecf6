#include "look/ClosingClicks.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>

bool ClosingClicks::eventFilter(QObject *watched, QEvent *event)
{
    const bool pressed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    const auto *widget = qobject_cast<const QWidget *>(watched);
    if (!pressed || !widget)
        return false;
    const QPoint place = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
    const QWidget *window = widget->window();
    const bool isSamePlace = (place - m_place).manhattanLength() < QApplication::startDragDistance();
    if (m_wasModal && window != m_window && isSamePlace &&
        !m_sincePress.hasExpired(QGuiApplication::styleHints()->mouseDoubleClickInterval()))
        return true;
    m_sincePress.start();
    m_place = place;
    m_window = window;
    m_wasModal = window->isModal();
    return false;
}
