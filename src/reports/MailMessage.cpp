#include "reports/MailMessage.h"

#include "app/Errors.h"

#include <QMimeDatabase>
#include <QRegularExpression>
#include <QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineLength = 76;
constexpr int bytesOfUuLine = 45;

bool isPlain(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar each) { return each >= u' ' && each <= u'~'; });
}

void refuseLineBreaks(const QString &text)
{
    static const QRegularExpression control(u"[\\x00-\\x1f\\x7f]"_s);
    if (text.contains(control))
        throw NotDone(u"An address or the subject has a line break in it."_s);
}

// The subject as words of a header: plain ones as they are, others in pieces of whole characters.
QByteArray headerWords(const QString &text)
{
    constexpr qsizetype plainLength = 60;
    if (isPlain(text) && text.size() <= plainLength && !text.contains(u"=?"_s))
        return text.toLatin1();
    constexpr qsizetype pieceLength = 39; // 52 signs as Base64
    QByteArrayList words;
    QByteArray piece;
    for (const char32_t sign : text.toUcs4()) {
        const QByteArray bytes = QString::fromUcs4(&sign, 1).toUtf8();
        if (piece.size() + bytes.size() > pieceLength) {
            words << "=?UTF-8?B?" + piece.toBase64() + "?=";
            piece.clear();
        }
        piece += bytes;
    }
    words << "=?UTF-8?B?" + piece.toBase64() + "?=";
    return words.join("\r\n ");
}

QByteArray hexPair(char byte)
{
    return QByteArray(1, byte).toHex().toUpper();
}

// One line of the text; a blank at its end would be lost on the way.
QByteArray quotedPrintableLine(const QByteArray &line)
{
    QByteArray text;
    qsizetype width = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char byte = line.at(i);
        const bool isBlankAtEnd = (byte == ' ' || byte == '\t') && i == line.size() - 1;
        const bool stays = ((byte >= ' ' && byte <= '~' && byte != '=') || byte == '\t') && !isBlankAtEnd;
        const QByteArray sign = stays ? QByteArray(1, byte) : '=' + hexPair(byte);
        if (width + sign.size() >= lineLength) {
            text += "=\r\n";
            width = 0;
        }
        text += sign;
        width += sign.size();
    }
    return text;
}

QByteArray quotedPrintable(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QByteArrayList lines;
    for (const QByteArray &line : text.toUtf8().split('\n'))
        lines << quotedPrintableLine(line);
    return lines.join("\r\n") + "\r\n";
}

QString plainName(const QString &name)
{
    static const QRegularExpression unusual(u"[^A-Za-z0-9._-]"_s);
    QString plain = name.section(u'/', -1);
    plain.replace(unusual, u"_"_s);
    return plain.isEmpty() ? u"attachment"_s : plain;
}

QByteArray partOf(const MailAttachment &attachment)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(attachment.name, QMimeDatabase::MatchExtension);
    const QByteArray disposition =
        plainName(attachment.name) == attachment.name
            ? "filename=\"" + attachment.name.toLatin1() + '"'
            : "filename*=UTF-8''" + attachment.name.section(u'/', -1).toUtf8().toPercentEncoding();
    return "Content-Type: " + type.name().toLatin1() + "\r\nContent-Transfer-Encoding: x-uuencode\r\n" +
           "Content-Disposition: attachment;\r\n " + disposition + "\r\n\r\n" + uuencoded(attachment);
}

// A value of six bits as a sign; ` stands for 0, because blanks at the end of a line get lost.
char uuSign(unsigned value)
{
    return value == 0 ? '`' : char(' ' + value);
}

QByteArray uuLine(const QByteArray &bytes)
{
    QByteArray line(1, uuSign(unsigned(bytes.size())));
    for (qsizetype i = 0; i < bytes.size(); i += 3) {
        unsigned three = 0;
        for (qsizetype k = i; k < i + 3; ++k)
            three = three << 8U | (k < bytes.size() ? unsigned(quint8(bytes.at(k))) : 0U);
        for (const unsigned shift : {18U, 12U, 6U, 0U})
            line += uuSign(three >> shift & 0x3fU);
    }
    return line + "\r\n";
}

} // namespace

QStringList mailAddresses(const QString &typed)
{
    static const QRegularExpression separators(u"[,;\\n]"_s);
    static const QRegularExpression bracketed(u"^[^<>]*<([^<>]*)>$"_s);
    static const QRegularExpression address(
        u"^[A-Za-z0-9.!#$%&'*+/=?^_`{|}~-]+@[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?$"_s);
    QStringList addresses;
    for (const QString &part : typed.split(separators)) {
        QString one = part.trimmed();
        if (one.isEmpty())
            continue;
        if (const auto found = bracketed.match(one); found.hasMatch())
            one = found.captured(1).trimmed();
        if (!address.match(one).hasMatch())
            throw NotDone(u"\u201c"_s + part.trimmed() + u"\u201d is no mail address."_s);
        addresses << one;
    }
    if (addresses.isEmpty())
        throw NotDone(u"Enter whom the mail goes to."_s);
    addresses.removeDuplicates();
    return addresses;
}

QByteArray uuencoded(const MailAttachment &attachment)
{
    QByteArray text = "begin 644 " + plainName(attachment.name).toLatin1() + "\r\n";
    text.reserve(text.size() + attachment.bytes.size() * 64 / bytesOfUuLine + 100);
    for (qsizetype i = 0; i < attachment.bytes.size(); i += bytesOfUuLine)
        text += uuLine(attachment.bytes.mid(i, bytesOfUuLine));
    return text + "`\r\nend\r\n";
}

QByteArray mailText(const MailMessage &message, const QDateTime &now)
{
    for (const QString &header : QStringList{message.from, message.subject} + message.to)
        refuseLineBreaks(header);
    const QByteArray id = QUuid::createUuid().toByteArray(QUuid::Id128);
    // "=_" stands in no line that was encoded.
    const QByteArray boundary = "=_tamsora_" + id;
    QByteArray text = "From: " + message.from.toLatin1() + "\r\nTo: " + message.to.join(u",\r\n "_s).toLatin1() +
                      "\r\nSubject: " + headerWords(message.subject) +
                      "\r\nDate: " + now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::RFC2822Date).toLatin1() +
                      "\r\nMessage-ID: <" + id + '@' + message.from.section(u'@', 1).toLatin1() +
                      ">\r\nMIME-Version: 1.0\r\nContent-Type: multipart/mixed;\r\n boundary=\"" + boundary + "\"\r\n";
    text += "\r\n--" + boundary +
            "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n" +
            quotedPrintable(message.text);
    for (const MailAttachment &attachment : message.attachments)
        text += "\r\n--" + boundary + "\r\n" + partOf(attachment);
    return text + "\r\n--" + boundary + "--\r\n";
}
