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

/// What a call waits for if it takes long.
enum class Awaited { File, Server };

/// How long a call may take before the user is told.
struct StallPatience
{
    /// For a call in which the thread does not run at all, such as reading from a share that does
    /// not answer. Windows does not tell this from waiting for a lock.
    std::chrono::milliseconds blocked = std::chrono::milliseconds(5000);
    /// For a call in which the thread waits for a server, or mostly sleeps but wakes up again and
    /// again, as it does while it waits for a lock of an embedded store.
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

    /// Scheduling figures of the watched thread.
    struct ThreadTimes
    {
        qint64 switches = 0; ///< How often the thread has been scheduled.
        std::chrono::nanoseconds running{0};
    };
    struct Call
    {
        Describe describe;
        Awaited awaited;
    };

    static std::optional<ThreadTimes> timesOfWatchedThread();
    std::chrono::milliseconds patienceFor(const std::optional<ThreadTimes>& now) const;

    void enter(Describe describe, Awaited awaited);
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
    std::vector<Call> calls_; ///< The calls that have not returned, the outermost one first.
    quint64 change_ = 0;      ///< Increases whenever a call begins or returns.
    Clock::time_point since_; ///< Time of the last change.

    quint64 lastLook_ = 0;  ///< Value of change_ at the last look.
    quint64 lastShown_ = 0; ///< Value of change_ when the last notice was shown.
    std::optional<ThreadTimes> lastTimes_;
    std::thread thread_; ///< The last member, since the thread uses all others.
};

/// Marks a call that the system can block without limit, such as reading a file on a network share.
/// Does nothing without a watch and in threads that are not watched.
class WatchedCall
{
public:
    /// The function says what is waited for. It may be called in the watching thread while this
    /// object lives.
    explicit WatchedCall(std::function<QString()> describe, Awaited awaited = Awaited::File);
    ~WatchedCall();
    WatchedCall(const WatchedCall&) = delete;
    WatchedCall& operator=(const WatchedCall&) = delete;

private:
    CallWatch* watch_ = nullptr;
};

} // namespace runtime
