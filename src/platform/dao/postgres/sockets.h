#pragma once

// Includes the socket functions of the system and defines names for the types that differ between
// systems.

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#endif

namespace dao::postgres {

#ifdef _WIN32
using Socket = SOCKET;
using PollEntry = WSAPOLLFD;
#else
using Socket = int;
using PollEntry = pollfd;
#endif

} // namespace dao::postgres
