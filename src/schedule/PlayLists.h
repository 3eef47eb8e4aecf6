#pragma once

#include "look/SteadyTabs.h"
#include "schedule/DaySchedule.h"

#include <map>

class QGroupBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

/// SSTab2, beside the grid: page 0 opens the registers, page 1 tells who plays round the present hour.
class PlayLists : public SteadyTabs
{
    Q_OBJECT

public:
    /// The names stand beside the lines, by field from 0.
    explicit PlayLists(std::vector<QString> fieldNames, QWidget *parent = nullptr);

    void showDay(const DaySchedule &schedule);
    /// The bookings of the selected hour on all fields, lines as RefreshList gives them.
    void showHour(const QString &hourText, const QString &players);
    /// A button for the register of a special group whose table exists.
    void addSpecialGroup(int group);

private:
    QWidget *makeRegisters();
    QWidget *makeLists();
    /// Lists are laid out and painted anew only when they change.
    void show(QPlainTextEdit *list, const QString &text);
    QPushButton *addRegisterButton(const QString &name, const QString &caption, const QString &iconName);

    const std::vector<QString> m_fieldNames;
    QVBoxLayout *m_registers = nullptr;
    QPlainTextEdit *m_current = nullptr;
    QPlainTextEdit *m_previous = nullptr;
    QPlainTextEdit *m_next = nullptr;
    QPlainTextEdit *m_hour = nullptr;
    QLabel *m_hourTitle = nullptr;
    std::map<QPlainTextEdit *, QString> m_texts;
};
