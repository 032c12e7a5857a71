#pragma once

#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace runtime {

/// A notice that is shown from its creation to its destruction.
class StallNotice
{
public:
    virtual ~StallNotice() = default;
    /// Returns true once the user has asked to end the program.
    virtual bool wantsEnd() = 0;
};

/// How long a call may take before the user is told.
struct StallPatience
{
    /// For a call in which the thread mostly sleeps, such as waiting for a lock, a server, or a
    /// share that does not answer.
    std::chrono::milliseconds waiting = std::chrono::milliseconds(1000);
    /// For any other call, such as one that computes.
    std::chrono::milliseconds busy = std::chrono::milliseconds(6500);
    /// Time between two looks at the call.
    std::chrono::milliseconds interval = std::chrono::milliseconds(250);
};

/// Watches the calls of the thread that creates it, from a thread of its own, because a blocked
/// thread cannot show anything. A process has at most one watch.
class CallWatch
{
public:
    /// Makes the notice about a call that has lasted this long. It is called, and the notice is
    /// used and destroyed, in the watching thread.
    using Show = std::function<std::unique_ptr<StallNotice>(const QString& what,
                                                            std::chrono::milliseconds lasted)>;

    /// The function `end` is called in the watching thread when the user asks to end the program.
    CallWatch(Show show, std::function<void()> end, const StallPatience& patience = {});
    ~CallWatch();
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;

private:
    friend class WatchedCall;
    using Clock = std::chrono::steady_clock;
    using Describe = std::function<QString()>;

    bool isAsleep(const std::optional<std::chrono::nanoseconds>& running) const;

    void enter(Describe describe);
    void leave();
    void run();
    std::optional<quint64> stalledCall();
    void showUntilOver(quint64 call);
    bool isOver(quint64 call) const { return stopping_ || calls_.empty() || change_ != call; }

    const Show show_;
    const std::function<void()> end_;
    const StallPatience patience_;
    const std::thread::id watched_;

    std::mutex mutex_;
    std::condition_variable stop_;
    bool stopping_ = false;
    std::vector<Describe> calls_; ///< The calls that have not returned, the outermost one first.
    quint64 change_ = 0;          ///< Increases whenever a call begins or returns.
    Clock::time_point since_;     ///< Time of the last change.

    quint64 lastLook_ = 0;  ///< Value of change_ at the last look.
    quint64 lastShown_ = 0; ///< Value of change_ when the last notice was shown.
    std::optional<std::chrono::nanoseconds> lastRunning_; ///< Processor time at the last look.
    std::thread thread_; ///< The last member, since the thread uses all others.
};

/// Marks a call that the system can block without limit, such as reading a file on a network share.
/// Does nothing without a watch and in threads that are not watched.
class WatchedCall
{
public:
    /// The function says what is waited for. It may be called in the watching thread while this
    /// object lives.
    explicit WatchedCall(std::function<QString()> describe);
    ~WatchedCall();
    WatchedCall(const WatchedCall&) = delete;
    WatchedCall& operator=(const WatchedCall&) = delete;

private:
    CallWatch* watch_ = nullptr;
};

} // namespace runtime
