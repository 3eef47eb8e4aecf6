#include "WindowDriver.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int pollMilliseconds = 15;

QObject *findIn(QWidget *window, const QString &name)
{
    if (window->objectName() == name)
        return window;
    const auto widgets = window->findChildren<QWidget *>(name);
    for (QWidget *widget : widgets)
        if (widget->isVisible())
            return widget;
    return window->findChild<QAction *>(name);
}

QString textOf(const QWidget *window)
{
    const auto *box = qobject_cast<const QMessageBox *>(window);
    return box ? u": "_s + box->text() : QString();
}

bool isUsable(const QString &name)
{
    QObject *found = WindowDriver::find(name);
    const auto *widget = qobject_cast<QWidget *>(found);
    return found && (!widget || widget->isEnabled());
}

} // namespace

WindowDriver::WindowDriver(int patienceMilliseconds) : m_patience(patienceMilliseconds)
{
    m_next.setSingleShot(true);
    m_next.setInterval(pollMilliseconds);
    connect(&m_next, &QTimer::timeout, this, &WindowDriver::goOn);
}

QObject *WindowDriver::find(const QString &name)
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return findIn(modal, name);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->isVisible() && !qobject_cast<QMenu *>(window))
            if (QObject *found = findIn(window, name))
                return found;
    return nullptr;
}

void WindowDriver::add(Step step)
{
    m_steps.push_back(std::move(step));
}

void WindowDriver::step(const QString &what, std::function<void()> act)
{
    add({what, [] { return true; }, std::move(act)});
}

void WindowDriver::await(const QString &what, std::function<bool()> condition)
{
    add({what, std::move(condition), [] {}});
}

void WindowDriver::awaitWindow(const QString &name)
{
    await(u"window "_s + name, [name] {
        const auto *window = control<QWidget>(name);
        return window && window->isWindow();
    });
}

void WindowDriver::awaitClosed(const QString &name)
{
    await(u"no window "_s + name, [name] {
        const auto windows = QApplication::topLevelWidgets();
        return std::none_of(windows.cbegin(), windows.cend(),
                            [&](const QWidget *window) { return window->isVisible() && window->objectName() == name; });
    });
}

void WindowDriver::click(const QString &name)
{
    add({u"click "_s + name, [name] { return isUsable(name); },
         [name] {
             QObject *found = find(name);
             if (auto *action = qobject_cast<QAction *>(found))
                 action->trigger();
             else if (auto *button = qobject_cast<QAbstractButton *>(found))
                 button->click();
             else if (auto *widget = qobject_cast<QWidget *>(found))
                 QTest::mouseClick(widget, Qt::LeftButton);
         }});
}

void WindowDriver::type(const QString &name, const QString &text)
{
    add({u"type into "_s + name,
         [name] { return isUsable(name) && (control<QLineEdit>(name) || control<QSpinBox>(name)); },
         [name, text] {
             if (auto *number = control<QSpinBox>(name))
                 return number->setValue(text.toInt());
             auto *box = control<QLineEdit>(name);
             box->setFocus();
             box->clear();
             QString typed;
             for (const QChar letter : text) // as typed: boxes look up what they hold after each letter
                 box->setText(typed += letter);
         }});
}

void WindowDriver::pressKey(const QString &name, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    add({u"key in "_s + name, [name] { return isUsable(name); },
         [=] { QTest::keyClick(control<QWidget>(name), key, modifiers); }});
}

void WindowDriver::selectRows(const QString &name, const std::vector<int> &rows)
{
    add({u"select rows of "_s + name, [name] { return isUsable(name) && control<QTableView>(name); },
         [=] {
             auto *table = control<QTableView>(name);
             Qt::KeyboardModifiers modifiers = Qt::NoModifier;
             for (const int row : rows) {
                 const QRect cell = table->visualRect(table->model()->index(row, 2));
                 QTest::mouseClick(table->viewport(), Qt::LeftButton, modifiers, cell.center());
                 modifiers = Qt::ControlModifier;
             }
         }});
}

void WindowDriver::clickAt(const QString &name, std::function<QPoint(QWidget *)> point)
{
    add({u"click in "_s + name, [name] { return isUsable(name); },
         [name, point = std::move(point)] {
             auto *widget = control<QWidget>(name);
             QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, point(widget));
         }});
}

void WindowDriver::answer(const QString &text, QMessageBox::StandardButton button)
{
    add({u"message: "_s + text,
         [text] {
             const auto *box = control<QMessageBox>(u"frm_Message"_s);
             return box && box->text() == text;
         },
         [button] { control<QMessageBox>(u"frm_Message"_s)->button(button)->click(); }});
}

bool WindowDriver::run()
{
    m_failure.clear();
    m_waited = 0;
    m_next.start();
    // The application's own loop: it ends the loops of modal windows with it, and the program can end it.
    QCoreApplication::exec();
    m_next.stop();
    if (m_failure.isEmpty() && !m_steps.empty())
        m_failure = u"the program ended before: "_s + m_steps.front().what;
    m_steps.clear();
    return m_failure.isEmpty();
}

void WindowDriver::goOn()
{
    if (m_steps.empty()) {
        QCoreApplication::exit();
        return;
    }
    if (m_waited == 0 && onStep)
        onStep(m_steps.front().what);
    if (!m_steps.front().ready()) {
        m_waited += pollMilliseconds;
        if (m_waited < m_patience) {
            m_next.start();
            return;
        }
        const QWidget *modal = QApplication::activeModalWidget();
        m_failure = u"waited in vain: "_s + m_steps.front().what +
                    (modal ? u" (open: "_s + modal->objectName() + textOf(modal) + u')' : QString());
        QCoreApplication::exit(1);
        return;
    }
    const auto act = std::move(m_steps.front().act);
    m_steps.pop_front();
    m_waited = 0;
    // The timer goes on during the action: one that opens a modal window returns only when it is closed.
    m_next.start();
    act();
}
