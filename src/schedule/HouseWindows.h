#pragma once

#include <QObject>

struct Station;
class RegisterWindow;
class TillActions;

/// Opens the windows round the main window: registers, catalogue, options, reports, mail. Those that only look on may
/// stay open beside the work, one of a kind.
class HouseWindows : public QObject
{
    Q_OBJECT

public:
    /// They open over `window`. The till tells which goods wait to be paid.
    HouseWindows(Station &station, const TillActions &till, QWidget *window);

    void openMembers();
    void openStudents();
    void openGroup(int group);
    /// These two ask who it is and open for an administrator alone.
    void openItems();
    void openOptions();
    /// `day` is "yyyy-mm-dd".
    void openSummary(const QString &day);
    void openMail(const QString &subject, const QString &text);

    /// Before the main window goes: closes the windows that stand beside it. False when somebody stays with what is not
    /// saved in one of them.
    [[nodiscard]] bool closeAll();

Q_SIGNALS:
    /// A customer was kept for the next booking, or is not any more.
    void customerKept();
    /// The catalogue or the stock may have changed.
    void itemsTouched();

private:
    /// The window of this name comes to the front, or is made.
    template <typename Window, typename... Arguments>
    void openBeside(const QString &name, Arguments &&...arguments);
    /// Nothing for anybody but an administrator.
    [[nodiscard]] QString administratorFor(const QString &what);
    void mailReport(const QByteArray &html, const QString &subject);

    Station &m_station;
    const TillActions &m_till;
    QWidget *m_window;
};
