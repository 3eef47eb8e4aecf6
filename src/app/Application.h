#pragma once

#include <QApplication>

#include <future>

class Prompts;

/// The program's name, version and look, and its last net: an exception that no window caught ends in the error window
/// and the program goes on.
class Application : public QApplication
{
    Q_OBJECT

public:
    Application(int &argc, char **argv);

    /// Who shows those errors; must outlive the event loop. Without one they only go to the standard error output.
    void setPrompts(Prompts *prompts) { m_prompts = prompts; }

    bool notify(QObject *receiver, QEvent *event) override;

private:
    void showUnknownError();

    Prompts *m_prompts = nullptr;
    std::future<void> m_fonts; ///< the system's fonts are being listed
    bool m_showingError = false;
};
