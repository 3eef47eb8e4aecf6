#include "app/SocketPoll.h"

#include <sys/socket.h>

#include <poll.h>

SocketPoll::Ready SocketPoll::waitFor(qintptr socket, Ready wanted, int milliseconds)
{
    const auto events = static_cast<short>((wanted.toRead ? POLLIN : 0) | (wanted.toWrite ? POLLOUT : 0));
    pollfd state{static_cast<int>(socket), events, 0};
    if (poll(&state, 1, milliseconds) <= 0)
        return {};
    const bool failed = (state.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0;
    return {failed || (state.revents & POLLIN) != 0, failed || (state.revents & POLLOUT) != 0};
}

void SocketPoll::shutDown(qintptr socket)
{
    shutdown(static_cast<int>(socket), SHUT_RDWR);
}
