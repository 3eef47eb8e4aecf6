#pragma once

#include "look/Page.h"
#include "plan/Lights.h"
#include "plan/PlanStatus.h"

#include <QIcon>

#include <memory>

class QToolButton;

namespace Ui {
class page_Lights;
}

/// The page on which the lights of a field are switched and the switching is logged.
class page_Lights : public Page
{
    Q_OBJECT

public:
    /// Reads the plan's settings, no database: refresh() does. Of a wrong setting the page of the bookings tells.
    explicit page_Lights(Station &station, QWidget *parent = nullptr);
    ~page_Lights() override;

    /// All five switches to off; nothing is stored.
    void resetSwitches();
    /// Shows the fields as they are now and the last commits of the chosen field. The switches stay.
    void refresh() override;
    void showTime(const QString &timeText) override;
    /// Shows the fields as they are now, read elsewhere.
    void showStatus(const std::vector<FieldStatus> &status);
    /// Chooses the field whose lights are switched. Its switches show what was committed last.
    void selectField(int field);

Q_SIGNALS:
    /// A new row stands in tbl_light.
    void lightsCommitted();

private:
    void buildSwitches();
    // A switch's state is the picture that it shows.
    void setSwitch(std::size_t row, bool on);
    [[nodiscard]] bool isOn(std::size_t row) const;
    void showField();
    std::vector<LightCommit> readField();
    void showCommits(const std::vector<LightCommit> &commits);
    void commit();

    Station &m_station;
    const std::unique_ptr<Ui::page_Lights> m_ui;
    std::array<QToolButton *, LightRows{}.size()> m_switches{};
    QIcon m_on;
    QIcon m_off;
    int m_field = 0;
};
