#include "support/server_proxy.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace testsupport {

namespace {

sockaddr_in loopback(int port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

void sendAll(int to, const char* bytes, std::size_t count)
{
    while (count > 0) {
        const ssize_t sent = ::send(to, bytes, count, MSG_NOSIGNAL);
        // A closed connection is detected by the next read.
        if (sent <= 0)
            return;
        bytes += sent;
        count -= static_cast<std::size_t>(sent);
    }
}

void answerAtOnce(int socket)
{
    const int yes = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof(yes));
}

/// Counts down and returns true when the counter reaches zero. A negative counter is inactive.
bool comesToZero(std::atomic<int>& left)
{
    return left >= 0 && left-- == 0;
}

} // namespace

ServerProxy::ServerProxy(int serverPort)
    : serverPort_(serverPort), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof(address);
    auto* general = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_, general, size) != 0 || ::listen(listener_, SOMAXCONN) != 0 ||
        ::getsockname(listener_, general, &size) != 0 || ::pipe2(wakers_, O_CLOEXEC) != 0)
        qFatal("the proxy cannot listen");
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { run(); });
}

ServerProxy::~ServerProxy()
{
    isOver_ = true;
    wake();
    thread_.join();
    endAll();
    for (const int each : {listener_, wakers_[0], wakers_[1]})
        ::close(each);
}

void ServerProxy::delay(std::chrono::milliseconds each)
{
    delay_ = static_cast<int>(each.count());
}

void ServerProxy::cutAfter(int chunks)
{
    cutIn_ = chunks;
}

void ServerProxy::stallAfter(int chunks)
{
    stallIn_ = chunks;
}

void ServerProxy::stallAfterBytes(qint64 bytes)
{
    stallInBytes_ = bytes;
}

void ServerProxy::resume()
{
    isStalled_ = false;
    wake();
}

void ServerProxy::cut()
{
    endAsked_ = true;
    wake();
}

void ServerProxy::swallowAfter(Direction direction, int chunks)
{
    swallowIn_[std::size_t(direction)] = chunks;
}

void ServerProxy::cutAfter(Direction direction, int chunks)
{
    endIn_[std::size_t(direction)] = chunks;
}

void ServerProxy::wake() const
{
    if (::write(wakers_[1], "", 1) != 1)
        qFatal("cannot wake the proxy");
}

void ServerProxy::run()
{
    while (!isOver_) {
        std::vector<pollfd> all{{wakers_[0], POLLIN, 0}};
        if (!isStalled_) {
            all.push_back({listener_, POLLIN, 0});
            for (const auto& [socket, other] : others_)
                all.push_back({socket, POLLIN, 0});
        }
        ::poll(all.data(), all.size(), -1);
        for (const pollfd& each : all) {
            if (each.revents == 0 || isStalled_)
                continue;
            if (each.fd == listener_)
                takeConnection();
            else if (each.fd != wakers_[0] && others_.contains(each.fd))
                pass(each.fd);
        }
        char word = 0;
        if (all.front().revents != 0 && ::read(wakers_[0], &word, 1) == 1 &&
            endAsked_.exchange(false)) {
            endAll();
            isStalled_ = false;
        }
    }
}

void ServerProxy::takeConnection()
{
    const int station = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(serverPort_);
    if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        ::close(station);
        ::close(server);
        return;
    }
    answerAtOnce(station);
    answerAtOnce(server);
    others_[station] = server;
    others_[server] = station;
    asked_[server] = false;
}

void ServerProxy::pass(int from)
{
    const int to = others_[from];
    char first = 0;
    const bool isChunk = ::recv(from, &first, 1, MSG_PEEK) > 0; // 0 at the end of the connection.
    if (isChunk && (comesToZero(stallIn_) || stallInBytes_ == 0)) {
        stallInBytes_ = -1;
        isStalled_ = true;
        return;
    }
    std::array<char, 65536> bytes = {};
    const ssize_t count = ::recv(from, bytes.data(), bytes.size(), 0);
    if (count <= 0) {
        for (const int each : {from, to}) {
            ::close(each);
            others_.erase(each);
            asked_.erase(each);
            dropped_.erase(each);
        }
        return;
    }
    if (drops(from))
        return;
    if (stallInBytes_ > 0)
        stallInBytes_ = std::max<qint64>(stallInBytes_ - count, 0);
    if (delay_ > 0) {
        pollfd waker = {wakers_[0], POLLIN, 0};
        ::poll(&waker, 1, delay_);
    }
    // The round trip is counted before the answer is forwarded, so that whoever reads the answer
    // finds it counted.
    if (asked_.contains(to)) {
        asked_[to] = true;
    } else if (asked_[from]) {
        asked_[from] = false;
        ++roundTrips_;
    }
    const bool isCut = comesToZero(cutIn_);
    sendAll(to, bytes.data(), static_cast<std::size_t>(isCut ? count / 2 : count));
    if (isCut) {
        endAll();
        return;
    }
}

/// Returns true if the chunk that was read from this socket is not forwarded.
bool ServerProxy::drops(int from)
{
    const auto direction =
        std::size_t(asked_.contains(from) ? Direction::ToStation : Direction::ToServer);
    const bool isEnd = comesToZero(endIn_[direction]);
    if (isEnd)
        ::shutdown(others_[from], SHUT_WR);
    if (comesToZero(swallowIn_[direction]) || isEnd) {
        dropped_.insert(from);
        hasDropped_ = true;
    }
    return dropped_.contains(from);
}

void ServerProxy::endAll()
{
    for (const auto& [socket, other] : others_)
        ::close(socket);
    others_.clear();
    asked_.clear();
    dropped_.clear();
}

} // namespace testsupport
