#pragma once

#include "app/Station.h"
#include "plan/PlanStatus.h"
#include "schedule/PlanAlerts.h"

#include <QTimer>
#include <QWidget>

#include <vector>

class LayoutPlan;
class QCalendarWidget;
class QLineEdit;

/// Plan and calendar of the booking page: which field and which day. The plan tells what goes on at the fields now and
/// where the players must make way.
class DayChooser : public QWidget
{
    Q_OBJECT

public:
    explicit DayChooser(Station &station, QWidget *parent = nullptr);

    /// Reads the plan's settings. Throws SettingError.
    void loadPlan();

    [[nodiscard]] int field() const { return m_field; }
    /// "yyyy-mm-dd"
    [[nodiscard]] QString day() const { return m_day; }
    /// Shows another day without a signal.
    void setDay(QDate day);
    /// As a click on the plan's hot spot of this field; a number without a field changes nothing.
    void pressField(int field);

    /// Reads what goes on at the fields now (tbl_booking, tbl_light); after an error the plan says nothing.
    void refreshPlan();
    void refreshPlanQuietly();
    void lookForAlerts() { m_alerts.look(); }
    /// Once a second: the alerts blink, and at a new minute the plan is read again.
    void goOnTo(QTime now);

    [[nodiscard]] QCalendarWidget *calendar() const { return m_calendar; }

Q_SIGNALS:
    void fieldChosen();
    void dayChosen();
    /// By the clock.
    void alertsRaised();
    /// Empty when nothing is known.
    void planRead(const std::vector<FieldStatus> &status);

private:
    LayoutPlan *makePlan();
    void makeCalendar();

    Station &m_station;
    QTimer m_dayClicked;
    QString m_day;
    int m_field = 0;
    int m_planMinute = -1; ///< of the last reading
    QCalendarWidget *m_calendar = nullptr;
    QLineEdit *m_fieldUnderMouse; ///< mirrors what the pointer is over
    QLineEdit *m_fieldSelected;   ///< mirrors the field
    LayoutPlan *m_plan;
    PlanAlerts m_alerts;
};
