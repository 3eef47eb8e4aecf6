#include "app/HostAddresses.h"

#include <array>
#include <memory>

#ifdef Q_OS_WIN
#include <ws2tcpip.h>
#else
#include <sys/socket.h>

#include <netdb.h>
#endif

namespace {

std::unique_ptr<addrinfo, void (*)(addrinfo *)> resolved(const QString &name, int flags)
{
    addrinfo wanted{};
    wanted.ai_flags = flags;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo *first = nullptr;
    if (getaddrinfo(name.toUtf8().constData(), nullptr, &wanted, &first) != 0)
        first = nullptr;
    return {first, [](addrinfo *list) {
                if (list)
                    freeaddrinfo(list);
            }};
}

} // namespace

bool HostAddresses::isAddress(const QString &text)
{
    return resolved(text, AI_NUMERICHOST) != nullptr;
}

QStringList HostAddresses::lookUp(const QString &name)
{
    constexpr std::size_t longest = 64; // an IPv6 address with its interface
    QStringList addresses;
    const auto list = resolved(name, 0);
    for (const addrinfo *host = list.get(); host; host = host->ai_next) {
        std::array<char, longest> text{};
        const auto length = static_cast<socklen_t>(host->ai_addrlen);
        if (getnameinfo(host->ai_addr, length, text.data(), text.size(), nullptr, 0, NI_NUMERICHOST) == 0)
            addresses << QString::fromLatin1(text.data());
    }
    return addresses;
}
