#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

struct MailAttachment
{
    QString name; ///< of the file, without a folder
    QByteArray bytes;
};

struct MailMessage
{
    QString from; ///< one address
    QStringList to;
    QString subject;
    QString text;
    std::vector<MailAttachment> attachments;
};

/// The addresses in a text, such as "anna@example.org, Tom <tom@example.org>", without the names. Throws NotDone, which
/// names the part that is no address, and when there is none.
QStringList mailAddresses(const QString &typed);

/// The message as it goes over the wire: text as quoted-printable UTF-8, each attachment as a uuencoded part, lines end
/// in CRLF. Throws NotDone when an address or the subject has a line break in it.
QByteArray mailText(const MailMessage &message, const QDateTime &now);

/// "begin 644 name", lines of at most 45 bytes each, "end". Signs that not every mail program takes become _ in the
/// name.
QByteArray uuencoded(const MailAttachment &attachment);
