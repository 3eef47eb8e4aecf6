#pragma once

#include <QtGlobal>

/// What a connection's socket is ready for. The two systems differ in their calls, so each has a file of its own.
namespace SocketPoll {

struct Ready
{
    bool toRead = false;
    bool toWrite = false;
};

/// Waits in place, at most so many milliseconds (0: does not wait), until the socket can be read or written or has
/// failed, which counts as both.
Ready waitFor(qintptr socket, Ready wanted, int milliseconds);

/// Ends the connection of a socket without closing it: whoever waits for it gets an error.
void shutDown(qintptr socket);

} // namespace SocketPoll
