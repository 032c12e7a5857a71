#include "platform/dao/answer_watch.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace dao {

namespace {

using Clock = std::chrono::steady_clock;

void shutDown(int socket)
{
#ifdef _WIN32
    ::shutdown(static_cast<SOCKET>(socket), SD_BOTH);
#else
    ::shutdown(socket, SHUT_RDWR);
#endif
}

} // namespace

/// The one thread that looks at all deadlines. A watch that is taken away leaves it asleep, so a
/// call that is answered in time costs no change of threads.
class AnswerWatch::Watchman
{
public:
    Watchman() : thread_([this](const std::stop_token& stop) { run(stop); }) {}

    int add(int socket, Clock::time_point deadline)
    {
        const std::lock_guard lock(mutex_);
        const int id = ++lastId_;
        watches_.emplace(id, Watch{socket, deadline, false});
        if (deadline < wakesAt_) {
            wakesAt_ = deadline;
            changed_.notify_one();
        }
        return id;
    }

    void remove(int id)
    {
        const std::lock_guard lock(mutex_);
        watches_.erase(id);
    }

    bool hasExpired(int id)
    {
        const std::lock_guard lock(mutex_);
        return watches_.at(id).expired;
    }

private:
    struct Watch
    {
        int socket;
        Clock::time_point deadline;
        bool expired;
    };

    void run(const std::stop_token& stop)
    {
        std::unique_lock lock(mutex_);
        while (!stop.stop_requested()) {
            const auto now = Clock::now();
            auto next = Clock::time_point::max();
            for (auto& [id, watch] : watches_) {
                if (watch.expired)
                    continue;
                if (watch.deadline <= now) {
                    // Under the lock: the socket cannot be closed and become another one.
                    shutDown(watch.socket);
                    watch.expired = true;
                } else {
                    next = std::min(next, watch.deadline);
                }
            }
            wakesAt_ = next;
            const auto isEarlier = [this, next] { return wakesAt_ < next; };
            if (next == Clock::time_point::max())
                changed_.wait(lock, stop, isEarlier);
            else
                changed_.wait_until(lock, stop, next, isEarlier);
        }
    }

    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::map<int, Watch> watches_;
    Clock::time_point wakesAt_ = Clock::time_point::max();
    int lastId_ = 0;
    std::jthread thread_;
};

AnswerWatch::Watchman& AnswerWatch::watchman()
{
    static Watchman only;
    return only;
}

AnswerWatch::AnswerWatch(int socket, std::chrono::milliseconds patience)
    : id_(watchman().add(socket, Clock::now() + patience))
{
}

AnswerWatch::~AnswerWatch()
{
    watchman().remove(id_);
}

bool AnswerWatch::hasExpired() const
{
    return watchman().hasExpired(id_);
}

} // namespace dao
