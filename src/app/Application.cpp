#include "app/Application.h"

#include "app/Errors.h"
#include "look/ClosingClicks.h"
#include "look/Look.h"

#include <QFontDatabase>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

Application::Application(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName(u"Tamsora"_s);
    setApplicationVersion(QLatin1StringView(TAMSORA_VERSION));
    Look::apply(*this);
    // The first text waits for the list of the system's fonts; the database is reached meanwhile.
    m_fonts = std::async(std::launch::async, [family = font().family()] { (void)QFontDatabase::hasFamily(family); });
    installEventFilter(new ClosingClicks(this));
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        showUnknownError();
        return false;
    }
}

// A second error while the window of the first is open would only stack another window: it goes to the standard error
// output, as an error of the error window itself does.
void Application::showUnknownError()
{
    if (!m_prompts || m_showingError) {
        qCritical("Unknown Error, and no window to show it in");
        return;
    }
    const QScopedValueRollback showing(m_showingError, true);
    try {
        ShowError(*m_prompts, ErrorCode::Unknown);
    } catch (...) {
        qCritical("Unknown Error, and its window failed too");
    }
}
