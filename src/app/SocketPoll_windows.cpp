#include "app/SocketPoll.h"

#include <winsock2.h>

SocketPoll::Ready SocketPoll::waitFor(qintptr socket, Ready wanted, int milliseconds)
{
    const auto events = static_cast<short>((wanted.toRead ? POLLRDNORM : 0) | (wanted.toWrite ? POLLWRNORM : 0));
    WSAPOLLFD state{static_cast<SOCKET>(socket), events, 0};
    if (WSAPoll(&state, 1, milliseconds) <= 0)
        return {};
    const bool failed = (state.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0;
    return {failed || (state.revents & POLLRDNORM) != 0, failed || (state.revents & POLLWRNORM) != 0};
}

void SocketPoll::shutDown(qintptr socket)
{
    shutdown(static_cast<SOCKET>(socket), SD_BOTH);
}
