#pragma once

#include <QMessageBox>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>

class QTableView;

/// Plays a script on the real windows. Each step waits until its control can be used, also while a modal window of the
/// step before is open, and acts then; a step whose control never comes fails the script.
class WindowDriver : public QObject
{
    Q_OBJECT

public:
    explicit WindowDriver(int patienceMilliseconds = 10000);

    // Steps; they are played in the order in which they were added.

    void step(const QString &what, std::function<void()> act);
    /// Waits for a condition.
    void await(const QString &what, std::function<bool()> condition);
    /// Waits until this is the window that people can use now.
    void awaitWindow(const QString &name);
    /// Waits until no window of this name is seen.
    void awaitClosed(const QString &name);
    /// Presses a button or triggers a menu entry.
    void click(const QString &name);
    /// Replaces the text of a box, letter by letter.
    void type(const QString &name, const QString &text);
    void pressKey(const QString &control, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Selects these rows of a table and no others, as clicks with Ctrl do.
    void selectRows(const QString &table, const std::vector<int> &rows);
    /// Presses the mouse at a point of a control, given when it is there.
    void clickAt(const QString &control, std::function<QPoint(QWidget *)> point);
    /// Waits for the message box with this text and presses one of its buttons.
    void answer(const QString &text, QMessageBox::StandardButton button = QMessageBox::Ok);

    /// Plays the script in the application's event loop; false when a step failed, or when the program ended before the
    /// last one.
    bool run();
    [[nodiscard]] QString failure() const { return m_failure; }
    /// Is told each step as it begins.
    std::function<void(const QString &what)> onStep;

    /// A control that people can use now: visible, and in the modal window when there is one.
    static QObject *find(const QString &name);
    template <typename Control>
    static Control *control(const QString &name)
    {
        return qobject_cast<Control *>(find(name));
    }

private:
    struct Step
    {
        QString what;
        std::function<bool()> ready;
        std::function<void()> act;
    };

    void add(Step step);
    void goOn();

    int m_patience;
    int m_waited = 0; ///< milliseconds, for the step that is next
    QTimer m_next;
    std::deque<Step> m_steps;
    QString m_failure;
};
