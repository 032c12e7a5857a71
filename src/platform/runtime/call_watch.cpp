#include "platform/runtime/call_watch.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>

namespace runtime {

namespace {

std::atomic<CallWatch*> theWatch = nullptr;

/// Returns how often the main thread has been scheduled, or nothing if the system does not tell.
std::optional<qint64> switchesOfMainThread()
{
#ifdef Q_OS_LINUX
    const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid());
    QFile status(QString::fromLatin1("/proc/self/task/" + pid + "/status"));
    if (!status.open(QIODevice::ReadOnly))
        return {};
    std::optional<qint64> sum;
    for (const QByteArray& line : status.readAll().split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).endsWith("voluntary_ctxt_switches"))
            sum = sum.value_or(0) + line.sliced(colon + 1).trimmed().toLongLong();
    }
    return sum;
#else
    return {};
#endif
}

} // namespace

CallWatch::CallWatch(Show show, std::function<void()> end, const StallPatience& patience)
    : show_(std::move(show)), end_(std::move(end)), patience_(patience),
      watched_(std::this_thread::get_id()), thread_([this] { run(); })
{
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

void CallWatch::enter(Describe describe)
{
    const std::lock_guard lock(mutex_);
    calls_.push_back(std::move(describe));
    ++change_;
    since_ = Clock::now();
}

/// The time of the surrounding call starts again, because the system has answered.
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

/// Returns the value of change_ for a call that the user must be told about, or nothing.
std::optional<quint64> CallWatch::stalledCall()
{
    const std::lock_guard lock(mutex_);
    const auto lasted = Clock::now() - since_;
    if (calls_.empty() || change_ == lastShown_ || lasted + patience_.interval < patience_.blocked)
        return {};
    const std::optional<qint64> switches = switchesOfMainThread();
    const bool isBlocked = switches && change_ == lastLook_ && switches == lastSwitches_;
    lastLook_ = change_;
    lastSwitches_ = switches;
    if (lasted < (isBlocked ? patience_.blocked : patience_.busy))
        return {};
    lastShown_ = change_;
    return change_;
}

void CallWatch::showUntilOver(quint64 call)
{
    std::unique_lock lock(mutex_);
    if (isOver(call))
        return;
    const QString what = calls_.back()();
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
    // Removing the notice may take a moment, in which the watched thread must be able to go on.
    lock.unlock();
}

WatchedCall::WatchedCall(std::function<QString()> describe)
{
    CallWatch* const watch = theWatch.load(std::memory_order_acquire);
    if (watch == nullptr || watch->watched_ != std::this_thread::get_id())
        return;
    watch_ = watch;
    watch_->enter(std::move(describe));
}

WatchedCall::~WatchedCall()
{
    if (watch_ != nullptr)
        watch_->leave();
}

} // namespace runtime
