#include "Program.h"

#include "app/Application.h"
#include "app/CounterTables.h"
#include "app/Errors.h"
#include "app/frm_Login.h"
#include "options/frm_FirstRun.h"
#include "schedule/frm_Main.h"

#include <QScreen>
#include <QTimer>

namespace {

constexpr QSize largestUsefulSize{1920, 1080};

} // namespace

Program::Program(std::function<QDateTime()> clock) : m_clock(std::move(clock))
{
    if (auto *application = qobject_cast<Application *>(QApplication::instance()))
        application->setPrompts(&m_prompts);
}

Program::~Program()
{
    if (auto *application = qobject_cast<Application *>(QApplication::instance()))
        application->setPrompts(nullptr);
}

bool Program::start()
{
    if (frm_FirstRun::isNeeded() && frm_FirstRun(m_prompts).exec() != QDialog::Accepted)
        return false;
    return guarded(m_prompts, ErrorCode::LoadingForm, [this] {
        AppSettings settings = loadStartupValues();
        LoadSettings(settings);
        m_station = std::make_unique<Station>(settings, m_prompts, m_clock);
        m_prompts.setStation(*m_station);
        m_station->database.setWaitSign(&m_waiting);
        CreateCounterTables(m_station->database, m_prompts, m_station->settings.CounterCount);
        openLoginWindow();
    });
}

void Program::openLoginWindow()
{
    m_login = std::make_unique<frm_Login>(*m_station);
    // Queued, so that the login window's own handler has ended when the window goes.
    QObject::connect(
        m_login.get(), &frm_Login::loggedIn, m_login.get(), [this] { openMainWindow(); }, Qt::QueuedConnection);
    const QRect available = m_login->screen()->availableGeometry();
    m_login->move(available.center() - m_login->rect().center());
    m_login->show();
}

void Program::changeShift()
{
    // The main window is not taken away under its clock, while that waits for the database.
    if (m_station->database.isWaiting()) {
        constexpr int untilTried = 50; // milliseconds
        QTimer::singleShot(untilTried, m_main.get(), [this] { changeShift(); });
        return;
    }
    // Shown before the other goes: the program ends with its last window.
    const bool isOpen = guarded(m_prompts, ErrorCode::LoadingForm, [this] { openLoginWindow(); });
    m_station->CurrentStaff.clear();
    m_station->keptCustomer.reset();
    m_main.reset();
    if (!isOpen)
        QCoreApplication::quit();
}

void Program::openMainWindow()
{
    // A second Enter may have logged in once more before the login window was gone.
    if (!m_login)
        return;
    guarded(m_prompts, ErrorCode::LoadingForm, [this] {
        m_main = std::make_unique<frm_Main>(*m_station);
        // Queued, for the same reason.
        QObject::connect(
            m_main.get(), &frm_Main::loggedOut, m_main.get(), [this] { changeShift(); }, Qt::QueuedConnection);
        const QRect available = m_main->screen()->availableGeometry();
        m_main->resize(available.size().boundedTo(largestUsefulSize));
        m_main->move(available.topLeft());
        m_login->hide();
        m_login.release()->deleteLater();
        // Queued, so that the login window has given its picture back before the main window needs room for its own.
        QMetaObject::invokeMethod(
            m_main.get(),
            [this] {
                m_main->showMaximized();
                m_main->load();
            },
            Qt::QueuedConnection);
    });
}
