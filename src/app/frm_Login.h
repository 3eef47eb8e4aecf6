#pragma once

#include <QImage>
#include <QWidget>

#include <future>
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
    void cleanAndCheck();

    Station &m_station;
    const std::unique_ptr<Ui::frm_Login> m_ui;
    std::future<QImage> m_coming; ///< the picture, read while the window is being made
    QImage m_picture;
};
