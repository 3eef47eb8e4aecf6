#pragma once

#include "reports/MailMessage.h"

#include <QWidget>

class Prompts;
class QLineEdit;
class QPlainTextEdit;
class RowsTable;

/// What a mail is made of: whom it goes to, subject, text and files.
class MailForm : public QWidget
{
    Q_OBJECT

public:
    MailForm(Prompts &prompts, const QString &subject, const QString &text, std::vector<MailAttachment> attachments,
             QWidget *parent = nullptr);

    /// Refuses a file that cannot be read and one that makes the mail too large.
    void attach(const QString &path);
    /// Whether something differs from what the form was made with.
    [[nodiscard]] bool changed() const;
    /// Without its sender. Throws NotDone when there is no address or one that is none.
    [[nodiscard]] MailMessage message() const;

private:
    QWidget *attachmentsRow();
    void chooseFiles();
    void removeSelected();
    void showAttachments();

    Prompts &m_prompts;
    std::vector<MailAttachment> m_attachments;
    bool m_otherFiles = false;
    QLineEdit *m_to;
    QLineEdit *m_subject;
    QPlainTextEdit *m_text;
    RowsTable *m_files;
    const QString m_givenSubject;
    const QString m_givenText;
};
