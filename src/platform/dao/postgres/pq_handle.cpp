#include "platform/dao/postgres/pq_handle.h"

#include "platform/dao/postgres/sockets.h"

#include <algorithm>
#include <cerrno>

namespace dao::postgres {

namespace {

int pollOne(PollEntry& one, int milliseconds)
{
#ifdef _WIN32
    return ::WSAPoll(&one, 1, milliseconds);
#else
    const int ready = ::poll(&one, 1, milliseconds);
    return ready < 0 && errno == EINTR ? 0 : ready;
#endif
}

/// Returns the flags with which poll waits until a socket can be read or written.
short eventsOf(Readiness readiness)
{
    switch (readiness) {
    case Readiness::ToRead:
        return POLLIN;
    case Readiness::ToWrite:
        return POLLOUT;
    case Readiness::ToReadOrWrite:
        break;
    }
    return POLLIN | POLLOUT;
}

} // namespace

bool waitFor(const PGconn* connection, Readiness readiness, const Deadline& deadline)
{
    const short events = eventsOf(readiness);
    for (;;) {
        const auto left = deadline.left().count();
        const int socket = PQ(socket)(connection);
        if (socket < 0)
            return true; // The next call of the client library reports the error.
        PollEntry one = {static_cast<Socket>(socket), events, 0};
        if (pollOne(one, static_cast<int>(std::max<std::chrono::milliseconds::rep>(left, 0))) != 0)
            return true;
        if (left <= 0)
            return false;
    }
}

} // namespace dao::postgres
