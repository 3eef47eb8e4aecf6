#pragma once

#include "reports/MailCourier.h"

#include <QObject>

/// Sends one mail at a time to the server of the settings while the event loop runs on. What does so is loaded with the
/// first mail.
class MailSender : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// `text` as mailText() makes it. Nothing has been sent to anybody when a recipient is refused.
    void send(const MailSettings &settings, const QStringList &to, const QByteArray &text);
    void cancel();
    [[nodiscard]] bool isSending() const { return m_courier && m_courier->isSending(); }

Q_SIGNALS:
    void progressed(qint64 sentBytes, qint64 allBytes);
    void sent();
    /// In plain words, with the server's own where it gave some.
    void failed(const QString &words);

private:
    /// False when there is nothing that could send.
    bool loadCourier();

    std::unique_ptr<MailCourier> m_courier;
};
