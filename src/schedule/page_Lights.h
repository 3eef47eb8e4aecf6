#pragma once

#include "schedule/Lights.h"

#include <QWidget>

#include <memory>

class QToolButton;

namespace Ui {
class page_Lights;
}

/// The page on which the lights of a field are switched and the switching is logged.
class page_Lights : public QWidget
{
    Q_OBJECT

public:
    /// Reads the plan's settings, no database: refresh() does. Throws SettingError.
    explicit page_Lights(Station &station, QWidget *parent = nullptr);
    ~page_Lights() override;

    /// All five switches to off; nothing is stored.
    void resetSwitches();
    /// Shows the fields as they are now and the last commits of the chosen field. The switches stay.
    void refresh();
    /// Chooses the field whose lights are switched. Its switches show what was committed last.
    void selectField(int field);

Q_SIGNALS:
    /// A new row stands in tbl_light.
    void lightsCommitted();

private:
    void buildSwitches();
    void toggle(int row);
    void setSwitch(int row, bool on);
    [[nodiscard]] bool isOn(int row) const;
    [[nodiscard]] int lightField() const;
    void commit();
    void planClicked();
    void showCommits(const std::vector<LightCommit> &commits);

    Station &m_station;
    const std::unique_ptr<Ui::page_Lights> m_ui;
    std::array<QToolButton *, 5> m_switches{};
    QString m_pointerText;
};
