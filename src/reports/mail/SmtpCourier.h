#pragma once

#include "reports/MailCourier.h"

#include <QObject>

/// Sends mail by libcurl, a piece at a time, while the event loop runs on.
class SmtpCourier : public MailCourier
{
public:
    explicit SmtpCourier(MailEvents events);
    ~SmtpCourier() override; ///< ends what is being sent

    void send(const MailSettings &settings, const QStringList &to, const QByteArray &text) override;
    void cancel() override;
    [[nodiscard]] bool isSending() const override { return m_transfer != nullptr; }

private:
    struct Transfer;

    void goOn();
    void report(int code);
    void endTransfer();

    MailEvents m_events;
    QObject m_context; ///< what is done after the timer has it done before this courier goes
    std::unique_ptr<Transfer> m_transfer;
};

class SmtpPlugin : public QObject, public MailPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID MailPlugin_iid)
    Q_INTERFACES(MailPlugin)

public:
    [[nodiscard]] std::unique_ptr<MailCourier> makeCourier(MailEvents events) override
    {
        return std::make_unique<SmtpCourier>(std::move(events));
    }
};
