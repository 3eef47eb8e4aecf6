#pragma once

#include "app/AnswerWait.h"

#include <QDialog>

class QLabel;

/// The small window that says what the program waits for while the database server does not answer, with a button that
/// gives up. While it holds the others, what is pressed or typed there is forgotten.
class frm_Waiting : public QDialog, public WaitSign
{
    Q_OBJECT

public:
    frm_Waiting();
    ~frm_Waiting() override;

    void hold() override;
    void show(const QString &what, const std::function<void()> &giveUp) override;
    void release() override;

    /// Closing the window and Esc give up, too.
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build(); ///< on the first wait: most starts never need it
    [[nodiscard]] bool isOwn(const QObject *watched) const;

    QLabel *m_what = nullptr;
    std::function<void()> m_giveUp;
    bool m_holding = false;
};
