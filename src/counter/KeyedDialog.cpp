#include "counter/KeyedDialog.h"

#include <QKeyEvent>

void KeyedDialog::watchKeys()
{
    for (QWidget *control : findChildren<QWidget *>())
        control->installEventFilter(this);
}

bool KeyedDialog::isPressing(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Escape:
        return true;
    default:
        return false;
    }
}

int KeyedDialog::codeOf(const QKeyEvent &event)
{
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return 0;
    if (event.key() == Qt::Key_Backspace)
        return 8;
    return event.text().size() == 1 ? event.text().front().unicode() : 0;
}

bool KeyedDialog::handles(const QKeyEvent &event)
{
    return isDeaf() || (event.isAutoRepeat() && isPressing(event)) || endsScan(event) || takeKey(event);
}

bool KeyedDialog::endsScan(const QKeyEvent &event)
{
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) {
        m_scan.take(event);
        return false;
    }
    const QString digits = m_scan.end(event);
    if (digits.size() < ScanReader::shortestCode)
        return false;
    takeScan(digits);
    return true;
}

bool KeyedDialog::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return handles(*static_cast<QKeyEvent *>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::Shortcut:
        return isDeaf();
    default:
        return QDialog::eventFilter(watched, event);
    }
}

void KeyedDialog::keyPressEvent(QKeyEvent *event)
{
    if (!handles(*event))
        QDialog::keyPressEvent(event);
}
