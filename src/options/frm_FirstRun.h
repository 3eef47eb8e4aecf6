#pragma once

#include "app/frm_Waiting.h"

#include <QDialog>

class Prompts;
class QLabel;
class QLineEdit;
class QSpinBox;

/// The guide for a counter that nobody has set up: it asks for the database, the hours and the counter's number, tries
/// the connection, and writes the settings file. Accepted, the program starts with that file.
class frm_FirstRun : public QDialog
{
    Q_OBJECT

public:
    explicit frm_FirstRun(Prompts &prompts, QWidget *parent = nullptr);

    /// There is no settings file, or one with nothing in it but what a start without one writes. A file in which
    /// somebody has entered anything is not asked about: what is wrong in it is an error.
    static bool isNeeded();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeContent();
    [[nodiscard]] QString refusal() const;
    [[nodiscard]] QString refusalOfConnection() const;
    /// Says what came of it; true when the program can work with it.
    bool tryConnecting();
    void finish();

    Prompts &m_prompts;
    frm_Waiting m_waiting;
    QString m_trouble; ///< of the last trial
    QLineEdit *m_server = nullptr;
    QLineEdit *m_user = nullptr;
    QLineEdit *m_password = nullptr;
    QLabel *m_connection = nullptr;
    QSpinBox *m_firstHour = nullptr;
    QSpinBox *m_lastHour = nullptr;
    QSpinBox *m_counter = nullptr;
    QSpinBox *m_counters = nullptr;
};
