#include "reports/frm_Mail.h"

#include "app/ActivityLog.h"
#include "app/Errors.h"
#include "app/SqlText.h"
#include "look/WrappedLabel.h"
#include "reports/MailForm.h"
#include "reports/MailSender.h"

#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QString noServer =
    u"No mail can be sent yet: an administrator enters the mail server under Options, “This counter”."_s;

QPushButton *button(QDialog *window, const QString &objectName, const QString &caption, const QString &tip)
{
    auto *made = new QPushButton(caption, window);
    made->setObjectName(objectName);
    made->setToolTip(tip);
    return made;
}

} // namespace

frm_Mail::frm_Mail(Station &station, const QString &subject, const QString &text,
                   std::vector<MailAttachment> attachments, QWidget *parent)
    : QDialog(parent),
      m_station(station),
      m_form(new MailForm(station.prompts, subject, text, std::move(attachments))),
      m_sender(new MailSender(this)),
      m_progress(new QProgressBar),
      m_error(wrappedLabel(u"lbl_MailError"_s, {}))
{
    setObjectName(u"frm_Mail"_s);
    setWindowTitle(u"Mail"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->setSpacing(8);
    layout->addWidget(wrappedLabel(u"lbl_Heading"_s, u"Mail"_s, 1.3));
    layout->addWidget(m_form, 1);
    layout->addWidget(m_error);
    addProgress(layout);
    addButtons(layout);
    connect(m_sender, &MailSender::sent, this, &frm_Mail::wasSent);
    connect(m_sender, &MailSender::failed, this, &frm_Mail::showFailure);
    showSending(false);
    showMissingSettings();
    constexpr QSize usual(760, 600);
    resize(usual);
    m_form->setFocus();
}

frm_Mail::~frm_Mail() = default;

void frm_Mail::addProgress(QVBoxLayout *layout)
{
    m_progress->setObjectName(u"prg_Mail"_s);
    m_progress->setAccessibleName(u"How much of the mail is sent"_s);
    constexpr int perMille = 1000;
    m_progress->setRange(0, perMille);
    m_progress->setFormat(u"Sending … %p %"_s);
    QSizePolicy policy = m_progress->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(policy);
    layout->addWidget(m_progress);
    connect(m_sender, &MailSender::progressed, m_progress,
            [this](qint64 bytes, qint64 all) { m_progress->setValue(int(bytes * perMille / qMax(all, qint64(1)))); });
}

void frm_Mail::addButtons(QVBoxLayout *layout)
{
    m_send = button(this, u"btn_Send"_s, u"&Send"_s, u"Sends the mail through the mail server of the settings."_s);
    m_cancel = button(this, u"btn_Cancel"_s, u"Sto&p sending"_s, u"Stops sending; the mail stays here as it is."_s);
    QPushButton *close =
        button(this, u"btn_Close"_s, u"&Close"_s, u"Closes this window; it asks before a mail is lost."_s);
    m_send->setAutoDefault(false);
    m_cancel->setAutoDefault(false);
    close->setDefault(true);
    connect(m_send, &QPushButton::clicked, this, &frm_Mail::send);
    connect(m_cancel, &QPushButton::clicked, m_sender, &MailSender::cancel);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    for (QPushButton *each : {m_send, m_cancel, close})
        buttons->addWidget(each);
    layout->addLayout(buttons);
}

void frm_Mail::attach(const QString &path)
{
    m_form->attach(path);
}

void frm_Mail::send()
{
    m_error->clear();
    guarded(m_station.prompts, ErrorCode::Unknown, [this] {
        const MailSettings settings = readMailSettings();
        if (!settings.complete())
            throw NotDone(noServer);
        MailMessage message = m_form->message();
        message.from = settings.from;
        m_logged = u"mail sent to "_s + message.to.join(u", "_s) + u": "_s + message.subject;
        const QByteArray text = mailText(message, m_station.now());
        m_progress->setValue(0);
        m_sender->send(settings, message.to, text);
        showSending(true);
    });
}

void frm_Mail::wasSent()
{
    showSending(false);
    // The log's text stands between quotes and takes 255 letters.
    constexpr qsizetype longest = 255;
    QString logged = m_logged.replace(u'\\', u'/').left(longest);
    WriteActivityLog(m_station, m_station.CurrentStaff, EscapeQuotes(logged));
    m_station.prompts.inform(u"The mail was sent."_s);
    accept();
}

void frm_Mail::showFailure(const QString &words)
{
    showSending(false);
    m_error->setText(words);
}

void frm_Mail::showSending(bool sending)
{
    m_form->setEnabled(!sending);
    m_send->setEnabled(!sending);
    m_cancel->setEnabled(sending);
    m_progress->setVisible(sending);
}

void frm_Mail::showMissingSettings()
{
    guarded(m_station.prompts, ErrorCode::Unknown, [this] {
        if (!readMailSettings().complete())
            m_error->setText(noServer);
    });
}

void frm_Mail::reject()
{
    const QString question = m_sender->isSending() ? u"The mail is still being sent. Stop that and close?"_s
                                                   : u"The mail was not sent. Close and lose it?"_s;
    if ((m_sender->isSending() || m_form->changed()) && !m_station.prompts.confirm(question, u"Mail"_s))
        return;
    QDialog::reject();
}
