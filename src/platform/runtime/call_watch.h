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

/// A notice that tells the user that a call, such as reading a file, takes long. It is visible from
/// its construction to its destruction.
class StallNotice
{
public:
    virtual ~StallNotice() = default;
    /// Returns true once the user has asked to end the program.
    virtual bool wantsEnd() = 0;
};

/// The kind of thing that a watched call waits for: a file or a server.
enum class Awaited { File, Server };

/// The time limits, in milliseconds, after which the user sees a notice about a call.
struct StallPatience
{
    /// The time limit for a call in which the thread does not run at all, such as reading from a
    /// network share that does not respond. Windows does not report whether a sleeping thread wakes
    /// up again and again. There the shorter time limit `waiting` applies to each sleeping thread.
    std::chrono::milliseconds blocked = std::chrono::milliseconds(5000);
    /// The time limit for a call in which the thread waits for a server, or sleeps most of the time
    /// and wakes up again and again. A thread that waits for a lock of an SQLite file behaves like
    /// that.
    std::chrono::milliseconds waiting = std::chrono::milliseconds(1000);
    /// The time limit for a call in which the thread runs, such as a long computation, or in which
    /// its state is unknown.
    std::chrono::milliseconds busy = std::chrono::milliseconds(6500);
    /// The time between two checks of the call that is running.
    std::chrono::milliseconds interval = std::chrono::milliseconds(250);
};

/// Watches the thread that creates this object, and shows a notice if a call in it, such as reading
/// a file, takes too long. The watching runs in a thread of its own, because a blocked thread
/// cannot show anything. A process has at most one CallWatch.
class CallWatch
{
public:
    /// A function that creates the notice about a call that takes too long. `what` names the file
    /// or server that the call waits for, `lasted` is the duration of the call so far. The watching
    /// thread calls the function, and uses and destroys the notice.
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

    /// How often and how long the watched thread has run, as the system reports it.
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
/// Does nothing if the process has no CallWatch or if the calling thread is not the watched one.
class WatchedCall
{
public:
    /// `describe` is a function that returns the name of the file or server that the call waits
    /// for. The thread that watches the call may run the function as long as this object exists.
    explicit WatchedCall(std::function<QString()> describe, Awaited awaited = Awaited::File);
    ~WatchedCall();
    WatchedCall(const WatchedCall&) = delete;
    WatchedCall& operator=(const WatchedCall&) = delete;

private:
    CallWatch* watch_ = nullptr;
};

} // namespace runtime
