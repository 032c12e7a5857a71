#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <map>
#include <thread>

namespace testsupport {

/// A line to a server on the loopback address that goes bad as a test wants it. A chunk is what
/// arrives at once from one side.
class ServerProxy
{
public:
    /// Leads to this port of the loopback address.
    explicit ServerProxy(int serverPort);
    ~ServerProxy();
    ServerProxy(const ServerProxy&) = delete;
    ServerProxy& operator=(const ServerProxy&) = delete;

    int port() const { return port_; }

    /// Holds every chunk back for so long.
    void delay(std::chrono::milliseconds each);
    /// Cuts all connections in the middle of a chunk, after so many whole ones; new ones are good.
    void cutAfter(int chunks);
    /// After so many chunks nothing gets through any more, and nobody is told.
    void stallAfter(int chunks);
    /// The same once so many bytes have passed, in both directions together.
    void stallAfterBytes(qint64 bytes);
    bool isStalled() const { return isStalled_; }
    /// Lets through again, beginning with what was held back.
    void resume();
    /// Ends all connections at both sides, stalled ones too.
    void cut();

    /// How often a question has been answered: changes of direction from the server to the station.
    int roundTrips() const { return roundTrips_; }

private:
    void run();
    void takeConnection();
    void pass(int from);
    void endAll();
    void wake() const;

    int serverPort_;
    int port_ = 0;
    int listener_ = -1;
    int wakers_[2] = {-1, -1};   ///< A pipe's reading and writing end.
    std::map<int, int> others_;  ///< Each socket's other end.
    std::map<int, bool> asked_;  ///< By the server's socket: a question stands unanswered.
    std::atomic<int> delay_ = 0; // ms
    std::atomic<int> cutIn_ = -1;
    std::atomic<int> stallIn_ = -1;
    std::atomic<qint64> stallInBytes_ = -1;
    std::atomic<bool> isStalled_ = false;
    std::atomic<bool> endAsked_ = false;
    std::atomic<bool> isOver_ = false;
    std::atomic<int> roundTrips_ = 0;
    std::thread thread_;
};

} // namespace testsupport
