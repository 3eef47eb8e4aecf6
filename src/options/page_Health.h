#pragma once

#include "options/Health.h"
#include "options/OptionsPage.h"

#include <QTimer>

class CheckRun;
class QLabel;
class QProgressBar;
class QPushButton;
class RowsTable;

/// How the database and this counter are: a line for each look, with what to do where something is not well, and a
/// thorough check of all bookings and sales. Everything goes in steps, and only reads.
class page_Health : public OptionsPage
{
    Q_OBJECT

public:
    page_Health(Station &station, const QString &administrator, QWidget *parent = nullptr);
    ~page_Health() override;

    void load() override;

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void takeLook();
    void lookAtPrinter();
    void addLine(const HealthLine &line);
    void addFailed(const QString &subject, const std::exception &error);
    void startCheck();
    void takePart();
    void endCheck(const QString &words);
    void stop();
    void showProgress(const QString &words, int done, int all);

    std::vector<HealthLook> m_looks;
    std::size_t m_nextLook = 0;
    QTimer m_step;
    std::shared_ptr<CheckRun> m_check; ///< while one runs
    RowsTable *m_list;
    QLabel *m_summary;
    QProgressBar *m_progress;
    QPushButton *m_run;
    QPushButton *m_stop;
    int m_toMind = 0; ///< lines that are not good
};
