#pragma once

#include <QtGlobal>

#include <array>
#include <atomic>
#include <chrono>
#include <map>
#include <set>
#include <thread>

namespace testsupport {

/// A proxy to a server on the loopback address that simulates network faults. A chunk is the data
/// of one read from one side.
class ServerProxy
{
public:
    /// Forwards connections to this port of the loopback address.
    explicit ServerProxy(int serverPort);
    ~ServerProxy();
    ServerProxy(const ServerProxy&) = delete;
    ServerProxy& operator=(const ServerProxy&) = delete;

    int port() const { return port_; }

    /// Delays every chunk by this time.
    void delay(std::chrono::milliseconds each);
    /// Closes all connections in the middle of a chunk, after this number of complete chunks. Later
    /// connections work.
    void cutAfter(int chunks);
    /// Stops forwarding after this number of chunks without closing the connections.
    void stallAfter(int chunks);
    /// Stops forwarding after this number of bytes, counted in both directions together, without
    /// closing the connections.
    void stallAfterBytes(qint64 bytes);
    bool isStalled() const { return isStalled_; }
    /// Continues forwarding, starting with the data that was held back.
    void resume();
    /// Closes all connections on both sides, including stalled ones.
    void cut();

    enum class Direction { ToServer, ToStation };
    /// Discards everything that goes in this direction on one connection, after this number of
    /// chunks in the direction. The connection stays open and the other direction works. Later
    /// connections work.
    void swallowAfter(Direction direction, int chunks);
    /// Ends one direction of a connection after this number of chunks in it. The receiver sees the
    /// end of the stream; the other direction works. Later connections work.
    void cutAfter(Direction direction, int chunks);
    /// Returns true once a chunk has been swallowed or cut off in one direction.
    bool hasDropped() const { return hasDropped_; }

    /// Returns the number of completed round trips, that is, changes of direction from the server
    /// to the station.
    int roundTrips() const { return roundTrips_; }

private:
    void run();
    void takeConnection();
    void pass(int from);
    bool drops(int from);
    void endAll();
    void wake() const;

    int serverPort_;
    int port_ = 0;
    int listener_ = -1;
    int wakers_[2] = {-1, -1};   ///< The read end and write end of the pipe that wakes the thread.
    std::map<int, int> others_;  ///< The peer socket of each socket.
    std::map<int, bool> asked_;  ///< True, by server socket, while a request has no answer yet.
    std::set<int> dropped_;      ///< The sockets whose data is discarded.
    std::atomic<int> delay_ = 0; // Delay in milliseconds.
    std::atomic<int> cutIn_ = -1;
    std::atomic<int> stallIn_ = -1;
    std::atomic<qint64> stallInBytes_ = -1;
    std::array<std::atomic<int>, 2> swallowIn_ = {-1, -1}; ///< By direction.
    std::array<std::atomic<int>, 2> endIn_ = {-1, -1};     ///< By direction.
    std::atomic<bool> hasDropped_ = false;
    std::atomic<bool> isStalled_ = false;
    std::atomic<bool> endAsked_ = false;
    std::atomic<bool> isOver_ = false;
    std::atomic<int> roundTrips_ = 0;
    std::thread thread_;
};

} // namespace testsupport
