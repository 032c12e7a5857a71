#include "platform/dao/postgres/pq_handle.h"

#include <algorithm>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <cerrno>
#include <poll.h>
#endif

namespace dao::postgres {

namespace {

#ifdef _WIN32
int pollOne(WSAPOLLFD& one, int milliseconds)
{
    return ::WSAPoll(&one, 1, milliseconds);
}
#else
int pollOne(pollfd& one, int milliseconds)
{
    const int ready = ::poll(&one, 1, milliseconds);
    return ready < 0 && errno == EINTR ? 0 : ready;
}
#endif

} // namespace

bool waitFor(const PGconn* connection, Readiness readiness, const Deadline& deadline)
{
    const short events = readiness == Readiness::ToRead    ? POLLIN
                         : readiness == Readiness::ToWrite ? POLLOUT
                                                           : POLLIN | POLLOUT;
    for (;;) {
        const auto left = deadline.left().count();
        const int socket = PQsocket(connection);
        if (socket < 0)
            return true; // the client library tells what is wrong with it
#ifdef _WIN32
        WSAPOLLFD one = {static_cast<SOCKET>(socket), events, 0};
#else
        pollfd one = {socket, events, 0};
#endif
        if (pollOne(one, static_cast<int>(std::max<std::chrono::milliseconds::rep>(left, 0))) != 0)
            return true;
        if (left <= 0)
            return false;
    }
}

} // namespace dao::postgres
