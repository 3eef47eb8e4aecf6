#pragma once

#include "app/QtPrompts.h"
#include "app/Station.h"
#include "app/frm_Waiting.h"

#include <memory>

class frm_Login;
class frm_Main;

/// The start-up routine: settings, counter tables, the login window, and after a login the main window.
class Program
{
public:
    explicit Program(std::function<QDateTime()> clock = &QDateTime::currentDateTime);
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;
    ~Program();

    /// Shows the login window, before it the guide where nobody has set this counter up. False after an error, which
    /// was shown with code 5, and when the guide was left: the program ends then.
    bool start();

    /// Nothing before start().
    [[nodiscard]] Station *station() { return m_station.get(); }
    [[nodiscard]] frm_Login *loginWindow() { return m_login.get(); }
    /// Nothing before a login.
    [[nodiscard]] frm_Main *mainWindow() { return m_main.get(); }

private:
    void openLoginWindow();
    void openMainWindow();
    /// The next shift logs in without starting the program.
    void changeShift();

    QtPrompts m_prompts;
    frm_Waiting m_waiting;
    std::function<QDateTime()> m_clock;
    std::unique_ptr<Station> m_station;
    std::unique_ptr<frm_Login> m_login;
    std::unique_ptr<frm_Main> m_main;
};
