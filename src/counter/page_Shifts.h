#pragma once

#include "counter/ShiftFigures.h"
#include "look/Page.h"

struct Station;
class FiguresTable;
class QLabel;
class QLayout;
class QPushButton;
class RowsTable;
class ShiftActions;
class TillActions;

/// The shifts of this counter: what the present one has done, how it is ended, and those of the last 30 days.
class page_Shifts : public Page
{
    Q_OBJECT

public:
    page_Shifts(Station &station, const TillActions &till, QWidget *parent = nullptr);

    /// Reads the figures and the ended shifts, quietly; when that fails those that are shown stay.
    void refresh() override;
    void showTime(const QString &timeText) override;

    [[nodiscard]] ShiftActions &actions() { return *m_actions; }

Q_SIGNALS:
    void mailWanted(const QString &subject, const QString &text);

private:
    [[nodiscard]] QWidget *makePresent();
    [[nodiscard]] QWidget *makeEnded();
    [[nodiscard]] QLayout *makeButtons();
    void read();
    void showEnded();
    void showStock();
    void mail();
    /// The ended shift that is selected, and the one before it when it is known.
    [[nodiscard]] const EndedShift *selected() const;
    [[nodiscard]] const EndedShift *beforeSelected() const;

    Station &m_station;
    ShiftActions *m_actions;
    std::vector<EndedShift> m_ended; ///< the latest first
    int m_wanted = 0;                ///< the id of the one that stays selected
    QLabel *m_heading = nullptr;
    QLabel *m_note = nullptr;
    QLabel *m_time = nullptr;
    FiguresTable *m_figures = nullptr;
    RowsTable *m_shifts = nullptr;
    QLabel *m_stockHeading = nullptr;
    RowsTable *m_stock = nullptr;
    QPushButton *m_slip = nullptr;
};
