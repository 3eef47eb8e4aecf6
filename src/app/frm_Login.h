#pragma once

#include <QPixmap>
#include <QWidget>

#include <memory>

struct Station;

namespace Ui {
class frm_Login;
}

/// The first window: lets a staff member take this counter.
class frm_Login : public QWidget
{
    Q_OBJECT

public:
    explicit frm_Login(Station &station, QWidget *parent = nullptr);
    ~frm_Login() override;

    /// Checks the two texts as they stand; a wrong pair is refused, a failing database shows error 1. Either way the
    /// window stays.
    void CheckStaffLogin();

Q_SIGNALS:
    /// The staff member is logged in (Station::CurrentStaff).
    void loggedIn();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void loadPicture();
    void cleanAndCheck();

    Station &m_station;
    const std::unique_ptr<Ui::frm_Login> m_ui;
    QPixmap m_picture;
};
