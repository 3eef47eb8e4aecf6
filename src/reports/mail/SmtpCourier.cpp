#include "reports/mail/SmtpCourier.h"

#include <QTimer>

#include <curl/curl.h>
#ifndef Q_OS_WIN
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

struct FreeList
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

int closeConnection(curl_socket_t socket)
{
#ifdef Q_OS_WIN
    return closesocket(socket);
#else
    return close(socket);
#endif
}

QString inPlainWords(int code, const MailSettings &settings, const QByteArray &detail)
{
    const QString server = u"The mail server "_s + settings.server;
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return server + u" was not found."_s;
    case CURLE_COULDNT_CONNECT:
        return server + u" does not answer."_s;
    case CURLE_OPERATION_TIMEDOUT:
        return server + u" did not answer in time."_s;
    case CURLE_LOGIN_DENIED:
        return server + u" refused the login of "_s + settings.user + u'.';
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return server + u" shows a certificate that nobody known vouches for; nothing was sent to it."_s;
    case CURLE_USE_SSL_FAILED:
        return server + u" offers no encryption."_s;
    case CURLE_SSL_CONNECT_ERROR:
        return u"No encrypted connection to the mail server "_s + settings.server + u'.';
    default:
        break;
    }
    if (detail.contains("RCPT"))
        return server + u" refused a recipient; the mail was sent to nobody."_s;
    if (detail.contains("MAIL failed"))
        return server + u" refused the sender "_s + settings.from + u'.';
    if (code == CURLE_SEND_ERROR || code == CURLE_RECV_ERROR || code == CURLE_GOT_NOTHING)
        return u"The connection to the mail server "_s + settings.server + u" was lost."_s;
    return server + u" did not take the mail."_s;
}

} // namespace

struct SmtpCourier::Transfer
{
    Transfer(MailSettings mailSettings, QByteArray mailText)
        : settings(std::move(mailSettings)), text(std::move(mailText)), multi(curl_multi_init()), easy(curl_easy_init())
    {
    }
    ~Transfer()
    {
        // Without this the library says farewell to the server and waits for the answer, in place.
        constexpr int bothWays = 2;
        for (const curl_socket_t socket : sockets)
            shutdown(socket, bothWays);
        curl_multi_remove_handle(multi, easy);
        curl_easy_cleanup(easy);
        curl_multi_cleanup(multi);
    }
    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

    void prepare(const QStringList &to);
    void secure() const;

    static std::size_t readOn(char *buffer, std::size_t size, std::size_t count, void *transfer);
    static int keepSocket(void *transfer, curl_socket_t opened, curlsocktype purpose);
    static int closeSocket(void *transfer, curl_socket_t closing);
    static int hear(CURL *easy, curl_infotype type, char *bytes, std::size_t size, void *transfer);

    template <typename Value>
    void set(CURLoption option, Value value) const
    {
        curl_easy_setopt(easy, option, value);
    }

    MailSettings settings;
    QByteArray text;
    qsizetype taken = 0; ///< bytes of the text that are on their way
    QByteArray answer;   ///< the server's last refusal
    std::array<char, CURL_ERROR_SIZE> detail{};
    std::unique_ptr<curl_slist, FreeList> recipients;
    CURLM *multi;
    CURL *easy;
    std::vector<curl_socket_t> sockets; ///< that are open
    QTimer pulse;
};

std::size_t SmtpCourier::Transfer::readOn(char *buffer, std::size_t size, std::size_t count, void *transfer)
{
    auto *self = static_cast<Transfer *>(transfer);
    const auto bytes = std::min(qsizetype(size * count), self->text.size() - self->taken);
    std::memcpy(buffer, self->text.constData() + self->taken, std::size_t(bytes));
    self->taken += bytes;
    return std::size_t(bytes);
}

int SmtpCourier::Transfer::keepSocket(void *transfer, curl_socket_t opened, curlsocktype /*purpose*/)
{
    static_cast<Transfer *>(transfer)->sockets.push_back(opened);
    return CURL_SOCKOPT_OK;
}

int SmtpCourier::Transfer::closeSocket(void *transfer, curl_socket_t closing)
{
    std::erase(static_cast<Transfer *>(transfer)->sockets, closing);
    return closeConnection(closing);
}

// Keeps what the server says when it refuses something: 4xx and 5xx.
int SmtpCourier::Transfer::hear(CURL * /*easy*/, curl_infotype type, char *bytes, std::size_t size, void *transfer)
{
    const QByteArray line = QByteArray(bytes, qsizetype(size)).trimmed();
    if (type == CURLINFO_HEADER_IN && (line.startsWith('4') || line.startsWith('5')))
        static_cast<Transfer *>(transfer)->answer = line;
    return 0;
}

void SmtpCourier::Transfer::prepare(const QStringList &to)
{
    constexpr long secondsToConnect = 20;
    constexpr long bufferSize = 512L * 1024;
    for (const QString &address : to) {
        curl_slist *longer = curl_slist_append(recipients.get(), ('<' + address.toLatin1() + '>').constData());
        (void)recipients.release();
        recipients.reset(longer);
    }
    const char *scheme = settings.security == MailSettings::Security::Tls ? "smtps://" : "smtp://";
    const QByteArray host =
        settings.server.contains(u':') ? '[' + settings.server.toUtf8() + ']' : settings.server.toUtf8();
    set(CURLOPT_URL, (scheme + host + ':' + QByteArray::number(settings.port)).constData());
    set(CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    set(CURLOPT_PROXY, "");
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_UPLOAD, 1L);
    set(CURLOPT_UPLOAD_BUFFERSIZE, bufferSize);
    set(CURLOPT_INFILESIZE_LARGE, curl_off_t(text.size()));
    set(CURLOPT_READFUNCTION, &Transfer::readOn);
    set(CURLOPT_READDATA, this);
    set(CURLOPT_SOCKOPTFUNCTION, &Transfer::keepSocket);
    set(CURLOPT_SOCKOPTDATA, this);
    set(CURLOPT_CLOSESOCKETFUNCTION, &Transfer::closeSocket);
    set(CURLOPT_CLOSESOCKETDATA, this);
    set(CURLOPT_VERBOSE, 1L);
    set(CURLOPT_DEBUGFUNCTION, &Transfer::hear);
    set(CURLOPT_DEBUGDATA, this);
    set(CURLOPT_ERRORBUFFER, detail.data());
    set(CURLOPT_MAIL_FROM, ('<' + settings.from.toLatin1() + '>').constData());
    set(CURLOPT_MAIL_RCPT, recipients.get());
    set(CURLOPT_CONNECTTIMEOUT, std::min(secondsToConnect, long(settings.seconds)));
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, long(settings.seconds));
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, long(settings.seconds));
    secure();
    curl_multi_add_handle(multi, easy);
}

void SmtpCourier::Transfer::secure() const
{
    const bool encrypted = settings.security != MailSettings::Security::None;
    set(CURLOPT_USE_SSL, long(encrypted ? CURLUSESSL_ALL : CURLUSESSL_NONE));
    if (!settings.authorities.isEmpty())
        set(CURLOPT_CAINFO, settings.authorities.toLocal8Bit().constData());
    if (!settings.user.isEmpty()) {
        set(CURLOPT_USERNAME, settings.user.toUtf8().constData());
        set(CURLOPT_PASSWORD, settings.password.toUtf8().constData());
    }
}

SmtpCourier::SmtpCourier(MailEvents events) : m_events(std::move(events))
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

SmtpCourier::~SmtpCourier() = default;

void SmtpCourier::send(const MailSettings &settings, const QStringList &to, const QByteArray &text)
{
    constexpr int milliseconds = 10;
    m_transfer = std::make_unique<Transfer>(settings, text);
    m_transfer->prepare(to);
    QObject::connect(&m_transfer->pulse, &QTimer::timeout, &m_transfer->pulse, [this] { goOn(); });
    m_transfer->pulse.start(milliseconds);
}

void SmtpCourier::cancel()
{
    if (!isSending())
        return;
    const bool isHandedOver = m_transfer->taken == m_transfer->text.size();
    endTransfer();
    m_events.failed(isHandedOver ? u"Sending was cancelled at its very end; the mail may have arrived all the same."_s
                                 : u"Sending was cancelled; the mail was not sent."_s);
}

// From the timer's own slot, so it is deleted when that has returned.
void SmtpCourier::endTransfer()
{
    m_transfer->pulse.stop();
    const std::shared_ptr<Transfer> done = std::move(m_transfer);
    QTimer::singleShot(0, &m_context, [done] {});
}

void SmtpCourier::goOn()
{
    int running = 0;
    const qsizetype before = m_transfer->taken;
    curl_multi_perform(m_transfer->multi, &running);
    if (m_transfer->taken != before)
        m_events.progressed(m_transfer->taken, m_transfer->text.size());
    if (!isSending()) // cancelled by whoever watches the progress
        return;
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(m_transfer->multi, &left))
        if (message->msg == CURLMSG_DONE) {
            report(message->data.result);
            return;
        }
}

void SmtpCourier::report(int code)
{
    const QByteArray detail(m_transfer->detail.data());
    QString words = inPlainWords(code, m_transfer->settings, detail);
    if (!m_transfer->answer.isEmpty())
        words += u"\nThe server says: "_s + QString::fromUtf8(m_transfer->answer);
    else if (!detail.isEmpty())
        words += u"\n"_s + QString::fromUtf8(detail);
    endTransfer();
    if (code == CURLE_OK)
        m_events.sent();
    else
        m_events.failed(words);
}
