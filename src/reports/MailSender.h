#pragma once

#include "reports/MailSettings.h"

#include <QObject>
#include <QStringList>

#include <memory>

/// Sends one mail at a time to the server of the settings while the event loop runs on.
class MailSender : public QObject
{
    Q_OBJECT

public:
    explicit MailSender(QObject *parent = nullptr);
    ~MailSender() override; ///< ends what is being sent

    /// `text` as mailText() makes it. Nothing has been sent to anybody when a recipient is refused.
    void send(const MailSettings &settings, const QStringList &to, const QByteArray &text);
    void cancel();
    [[nodiscard]] bool isSending() const { return m_transfer != nullptr; }

Q_SIGNALS:
    void progressed(qint64 sentBytes, qint64 allBytes);
    void sent();
    /// In plain words, with the server's own where it gave some.
    void failed(const QString &words);

private:
    struct Transfer;

    void goOn();
    void report(int code);

    std::unique_ptr<Transfer> m_transfer;
};
