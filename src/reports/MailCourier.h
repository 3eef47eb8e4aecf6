#pragma once

#include "reports/MailSettings.h"

#include <QStringList>
#include <QtPlugin>

#include <functional>
#include <memory>

/// What becomes of a mail that is being sent.
struct MailEvents
{
    std::function<void(qint64 sentBytes, qint64 allBytes)> progressed;
    std::function<void()> sent;
    /// In plain words, with the server's own where it gave some.
    std::function<void(const QString &words)> failed;
};

/// Takes one mail at a time to a server.
class MailCourier
{
public:
    MailCourier() = default;
    MailCourier(const MailCourier &) = delete;
    MailCourier &operator=(const MailCourier &) = delete;
    virtual ~MailCourier() = default;

    virtual void send(const MailSettings &settings, const QStringList &to, const QByteArray &text) = 0;
    virtual void cancel() = 0;
    [[nodiscard]] virtual bool isSending() const = 0;
};

/// What the plug-in gives that sends mail.
class MailPlugin
{
public:
    MailPlugin() = default;
    MailPlugin(const MailPlugin &) = delete;
    MailPlugin &operator=(const MailPlugin &) = delete;
    virtual ~MailPlugin() = default;

    [[nodiscard]] virtual std::unique_ptr<MailCourier> makeCourier(MailEvents events) = 0;
};

#define MailPlugin_iid "tamsora.MailPlugin/1"
Q_DECLARE_INTERFACE(MailPlugin, MailPlugin_iid)
