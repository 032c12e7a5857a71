#include "platform/runtime/call_watch.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <atomic>

#ifdef Q_OS_WIN
#include "platform/runtime/windows_handle.h"

#include <windows.h>
#endif

namespace runtime {

namespace {

std::atomic<CallWatch*> theWatch = nullptr;

#ifdef Q_OS_WIN
/// The Windows thread id of the thread that created the CallWatch.
std::atomic<DWORD> watchedThread = 0;
#else
/// Returns the contents of a file about the main thread in Linux's /proc folder, or an empty value
/// on other systems.
QByteArray fileOfMainThread(const char* name)
{
    const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid());
    QFile file(QString::fromLatin1("/proc/self/task/" + pid + '/' + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
#endif

} // namespace

#ifdef Q_OS_WIN

/// Returns the processor times of the watched thread, or no value if Windows does not report them.
/// Windows does not count how often a thread wakes up. The function therefore returns a greater
/// count `switches` at each call, as if the thread wakes up again and again. A sleeping thread then
/// counts as waiting for a lock.
std::optional<CallWatch::ThreadTimes> CallWatch::timesOfWatchedThread()
{
    static qint64 looks = 0;
    const WindowsHandle thread(OpenThread(THREAD_QUERY_LIMITED_INFORMATION, FALSE, watchedThread));
    FILETIME created;
    FILETIME ended;
    FILETIME inSystem;
    FILETIME inProgram;
    if (!thread.isValid() || !GetThreadTimes(thread.get(), &created, &ended, &inSystem, &inProgram))
        return {};
    const auto ticks = [](const FILETIME& time) {
        return static_cast<qint64>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    };
    constexpr qint64 nanosecondsPerTick = 100;
    return ThreadTimes{++looks, std::chrono::nanoseconds((ticks(inSystem) + ticks(inProgram)) *
                                                         nanosecondsPerTick)};
}

#else

/// Returns the processor times of the watched thread, or no value if the system does not report
/// them.
std::optional<CallWatch::ThreadTimes> CallWatch::timesOfWatchedThread()
{
    ThreadTimes times;
    const QByteArray status = fileOfMainThread("status");
    const QByteArray running = fileOfMainThread("schedstat");
    // A Linux kernel without scheduling statistics has no file "schedstat". The function then
    // returns no value, because a running time of 0 would wrongly mean that the thread sleeps.
    if (status.isEmpty() || running.isEmpty())
        return {};
    for (const QByteArray& line : status.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).endsWith("voluntary_ctxt_switches"))
            times.switches += line.sliced(colon + 1).trimmed().toLongLong();
    }
    times.running = std::chrono::nanoseconds(running.split(' ').first().toLongLong());
    return times;
}

#endif

CallWatch::CallWatch(Show show, std::function<void()> end, const StallPatience& patience)
    : show_(std::move(show)), end_(std::move(end)), patience_(patience),
      watched_(std::this_thread::get_id()), thread_([this] { run(); })
{
#ifdef Q_OS_WIN
    watchedThread = GetCurrentThreadId();
#endif
    theWatch = this;
}

CallWatch::~CallWatch()
{
    theWatch = nullptr;
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    stop_.notify_all();
    thread_.join();
}

void CallWatch::enter(Describe describe, Awaited awaited)
{
    const std::lock_guard lock(mutex_);
    calls_.push_back({std::move(describe), awaited});
    ++change_;
    since_ = Clock::now();
}

/// Ends a watched call. If it ran inside another watched call, the duration of the outer call is
/// measured from now on, because the system has just answered.
void CallWatch::leave()
{
    const std::lock_guard lock(mutex_);
    calls_.pop_back();
    ++change_;
    since_ = Clock::now();
}

void CallWatch::run()
{
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            if (stop_.wait_for(lock, patience_.interval, [this] { return stopping_; }))
                return;
        }
        if (const std::optional<quint64> call = stalledCall())
            showUntilOver(*call);
    }
}

/// Returns the number of the current call if the call has reached its time limit and no notice was
/// shown for it yet, otherwise no value.
std::optional<quint64> CallWatch::stalledCall()
{
    const std::lock_guard lock(mutex_);
    const auto lasted = Clock::now() - since_;
    // Whether the thread sleeps is found by comparing its processor times with an earlier reading.
    // The first reading therefore takes place one interval (the time between two checks) before the
    // shortest time limit for a sleeping thread.
    const auto shortest = std::min(patience_.blocked, patience_.waiting);
    if (calls_.empty() || change_ == lastShown_ || lasted + patience_.interval < shortest)
        return {};
    const std::optional<ThreadTimes> times = timesOfWatchedThread();
    const std::chrono::milliseconds patience = patienceFor(times);
    lastLook_ = change_;
    lastTimes_ = times;
    if (lasted < patience)
        return {};
    lastShown_ = change_;
    return change_;
}

std::chrono::milliseconds CallWatch::patienceFor(const std::optional<ThreadTimes>& now) const
{
    if (!now || !lastTimes_ || change_ != lastLook_)
        return patience_.busy;
    constexpr int mostlyAsleep = 10; // at most a tenth of the time
    if ((now->running - lastTimes_->running) * mostlyAsleep >= patience_.interval)
        return patience_.busy;
    const bool wakesUp = now->switches != lastTimes_->switches;
    return wakesUp || calls_.back().awaited == Awaited::Server ? patience_.waiting
                                                               : patience_.blocked;
}

void CallWatch::showUntilOver(quint64 call)
{
    std::unique_lock lock(mutex_);
    if (isOver(call))
        return;
    const QString what = calls_.back().describe();
    const auto lasted =
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - since_);
    lock.unlock();
    const std::unique_ptr<StallNotice> notice = show_(what, lasted);
    constexpr std::chrono::milliseconds shortWait(50);
    lock.lock();
    while (!isOver(call)) {
        lock.unlock();
        if (notice->wantsEnd())
            end_();
        lock.lock();
        stop_.wait_for(lock, shortWait, [this] { return stopping_; });
    }
    // The mutex is unlocked before the notice is destroyed, because the destruction may take a
    // moment and the watched thread must not wait for the mutex meanwhile.
    lock.unlock();
}

WatchedCall::WatchedCall(std::function<QString()> describe, Awaited awaited)
{
    CallWatch* const watch = theWatch.load(std::memory_order_acquire);
    if (watch == nullptr || watch->watched_ != std::this_thread::get_id())
        return;
    watch_ = watch;
    watch_->enter(std::move(describe), awaited);
}

WatchedCall::~WatchedCall()
{
    if (watch_ != nullptr)
        watch_->leave();
}

} // namespace runtime
