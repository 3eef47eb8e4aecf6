#pragma once

#include "app/Station.h"
#include "reports/MailMessage.h"

#include <QDialog>

class MailForm;
class MailSender;
class QLabel;
class QProgressBar;
class QPushButton;

/// Sends a mail through the server of the settings. It goes on working while a mail is being sent, keeps everything
/// when that fails, and asks before something typed is lost. A mail that was sent stands in the activity log.
class frm_Mail : public QDialog
{
    Q_OBJECT

public:
    frm_Mail(Station &station, const QString &subject = {}, const QString &text = {},
             std::vector<MailAttachment> attachments = {}, QWidget *parent = nullptr);
    ~frm_Mail() override;

    /// What btn_Attach does with a file that was chosen.
    void attach(const QString &path);

    void reject() override;

private:
    void addProgress(class QVBoxLayout *layout);
    void addButtons(QVBoxLayout *layout);
    void send();
    void wasSent();
    void showFailure(const QString &words);
    void showSending(bool sending);
    void showMissingSettings();

    Station &m_station;
    MailForm *m_form;
    MailSender *m_sender;
    QProgressBar *m_progress;
    QLabel *m_error;
    QPushButton *m_send = nullptr;
    QPushButton *m_cancel = nullptr;
    QString m_logged; ///< what the activity log will say of the mail that is being sent
};
