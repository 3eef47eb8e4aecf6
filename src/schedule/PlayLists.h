#pragma once

#include "look/SteadyTabs.h"
#include "schedule/DaySchedule.h"

#include <map>

class QLabel;
class QPlainTextEdit;

/// SSTab2, beside the grid: page 0 tells who plays in the selected hour, page 1 who plays round the present one.
class PlayLists : public SteadyTabs
{
    Q_OBJECT

public:
    /// The names stand beside the lines, by field from 0.
    explicit PlayLists(std::vector<QString> fieldNames, QWidget *parent = nullptr);

    void showDay(const DaySchedule &schedule);
    /// The bookings of the selected hour on all fields, lines as RefreshList gives them.
    void showHour(const QString &hourText, const QString &players);

private:
    QWidget *makeHour();
    QWidget *makeLists();
    /// Lists are laid out and painted anew only when they change.
    void show(QPlainTextEdit *list, const QString &text);

    const std::vector<QString> m_fieldNames;
    QPlainTextEdit *m_current = nullptr;
    QPlainTextEdit *m_previous = nullptr;
    QPlainTextEdit *m_next = nullptr;
    QPlainTextEdit *m_hour = nullptr;
    QLabel *m_hourTitle = nullptr;
    std::map<QPlainTextEdit *, QString> m_texts;
};
