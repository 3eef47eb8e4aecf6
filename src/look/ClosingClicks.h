#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>

/// Keeps the second half of a double click, or a bouncing button, from what lies below a window that the first click
/// closed: there it would begin something that nobody meant.
class ClosingClicks : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QElapsedTimer m_sincePress;
    QPoint m_place;
    const void *m_window = nullptr; ///< only compared, it may be gone
    bool m_wasModal = false;
};
