#include "platform/runtime/call_watch.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <atomic>
#include <ctime>
#include <future>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using runtime::WatchedCall;

namespace {

/// What the notices of a watch were made for, and how many are shown.
struct Seen
{
    std::mutex mutex;
    std::condition_variable changed;
    QStringList whats;
    int shown = 0;
    bool endWanted = false;
    int ended = 0;

    bool waitFor(const std::function<bool()>& condition)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, 60s, condition);
    }
    /// Counts the notices that have come during this time.
    int noticesAfter(std::chrono::milliseconds time)
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, time, [this] { return !whats.isEmpty(); });
        return static_cast<int>(whats.size());
    }
};

class Notice final : public runtime::StallNotice
{
public:
    Notice(Seen& seen, const QString& what) : seen_(seen)
    {
        const std::lock_guard lock(seen_.mutex);
        seen_.whats.append(what);
        ++seen_.shown;
        seen_.changed.notify_all();
    }
    ~Notice() override
    {
        const std::lock_guard lock(seen_.mutex);
        --seen_.shown;
        seen_.changed.notify_all();
    }
    Q_DISABLE_COPY_MOVE(Notice)
    bool wantsEnd() override
    {
        const std::lock_guard lock(seen_.mutex);
        return std::exchange(seen_.endWanted, false);
    }

private:
    Seen& seen_;
};

class CallWatchTest : public testing::Test
{
protected:
    runtime::CallWatch watchWith(const runtime::StallPatience& patience)
    {
        return runtime::CallWatch(
            [this](const QString& what, std::chrono::milliseconds) {
                return std::make_unique<Notice>(seen_, what);
            },
            [this] {
                const std::lock_guard lock(seen_.mutex);
                ++seen_.ended;
                seen_.changed.notify_all();
            },
            patience);
    }

    Seen seen_;
};

constexpr runtime::StallPatience impatient{
    .blocked = 100ms, .waiting = 100ms, .busy = 100ms, .interval = 20ms};
constexpr runtime::StallPatience onlyBlocked{
    .blocked = 100ms, .waiting = 1h, .busy = 1h, .interval = 20ms};
constexpr runtime::StallPatience onlyWaiting{
    .blocked = 1h, .waiting = 1s, .busy = 1h, .interval = 250ms};

} // namespace

TEST_F(CallWatchTest, LongCall_IsNoticedOnceUntilItEnds)
{
    const auto watch = watchWith(impatient);
    {
        const WatchedCall call([] { return u"the store"_s; });
        ASSERT_TRUE(seen_.waitFor([this] { return seen_.shown == 1; }));
    }
    EXPECT_TRUE(seen_.waitFor([this] { return seen_.shown == 0; }));
    EXPECT_EQ(seen_.whats, QStringList{u"the store"_s});
}

TEST_F(CallWatchTest, EachLongCall_IsNoticed)
{
    const auto watch = watchWith(impatient);
    for (int i = 1; i <= 3; ++i) {
        const WatchedCall call([i] { return QString::number(i); });
        ASSERT_TRUE(seen_.waitFor([this, i] { return seen_.whats.size() == i; }));
    }
    EXPECT_EQ(seen_.whats, (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

TEST_F(CallWatchTest, CallInsideACall_IsTheOneThatIsNamed)
{
    const auto watch = watchWith(impatient);
    const WatchedCall outer([] { return u"outer"_s; });
    {
        const WatchedCall inner([] { return u"inner"_s; });
        ASSERT_TRUE(seen_.waitFor([this] { return seen_.shown == 1; }));
    }
    EXPECT_EQ(seen_.whats.value(0), u"inner"_s);
}

TEST_F(CallWatchTest, CallAroundAReturnedCall_IsNamedAgain)
{
    const auto watch = watchWith(impatient);
    const WatchedCall outer([] { return u"outer"_s; });
    {
        const WatchedCall inner([] { return u"inner"_s; });
    }
    ASSERT_TRUE(seen_.waitFor([this] { return seen_.shown == 1; }));
    EXPECT_EQ(seen_.whats.value(0), u"outer"_s);
}

#ifdef Q_OS_LINUX // Windows does not tell a blocked thread from one that wakes up.
TEST_F(CallWatchTest, BlockedThread_IsNoticedBeforeABusyOne)
{
    const auto watch = watchWith(onlyBlocked);
    const WatchedCall call([] { return u"the store"_s; });
    EXPECT_TRUE(seen_.waitFor([this] { return seen_.shown == 1; }));
}
#endif

TEST_F(CallWatchTest, WaitForAServer_IsNoticedLikeAWaitForALock)
{
    const auto watch = watchWith(onlyWaiting);
    const WatchedCall call([] { return u"the server"_s; }, runtime::Awaited::Server);
    EXPECT_TRUE(seen_.waitFor([this] { return seen_.shown == 1; }));
}

/// A wait for a lock wakes up again and again.
TEST_F(CallWatchTest, ThreadThatWakesUp_IsNotTakenForABlockedOne)
{
    const auto watch = watchWith({.blocked = 2s, .waiting = 1h, .busy = 1h, .interval = 1s});
    const WatchedCall call([] { return u"the store"_s; });
    for (int i = 0; i < 800; ++i)
        ASSERT_EQ(seen_.noticesAfter(5ms), 0);
}

TEST_F(CallWatchTest, ThreadThatWakesUpAgainAndAgain_IsNoticedAsWaiting)
{
    const auto watch = watchWith(onlyWaiting);
    const WatchedCall call([] { return u"the store"_s; });
    const auto begin = std::chrono::steady_clock::now();
    while (seen_.noticesAfter(20ms) == 0 && std::chrono::steady_clock::now() - begin < 60s) {
    }
    EXPECT_EQ(seen_.whats, QStringList{u"the store"_s});
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 1s);
}

#ifdef Q_OS_LINUX // Elsewhere std::clock() may tell the time of day.
/// By hand: a thread that runs for at least 2.5 of three seconds runs for at least half of each.
TEST_F(CallWatchTest, BusyThread_IsNotTakenForASleepingOne)
{
    const auto watch = watchWith({.blocked = 1s, .waiting = 1s, .busy = 1h, .interval = 1s});
    const WatchedCall call([] { return u"the store"_s; });
    const auto begin = std::chrono::steady_clock::now();
    const std::clock_t used = std::clock();
    while (std::chrono::steady_clock::now() - begin < 3s) {
    }
    if (2 * (std::clock() - used) < 5 * CLOCKS_PER_SEC)
        GTEST_SKIP() << "Other processes leave the thread too little time.";
    EXPECT_EQ(seen_.noticesAfter(0ms), 0);
}
#endif

TEST_F(CallWatchTest, WishToEnd_CallsTheEnd)
{
    const auto watch = watchWith(impatient);
    const WatchedCall call([] { return u"the store"_s; });
    ASSERT_TRUE(seen_.waitFor([this] { return seen_.shown == 1; }));
    {
        const std::lock_guard lock(seen_.mutex);
        seen_.endWanted = true;
    }
    EXPECT_TRUE(seen_.waitFor([this] { return seen_.ended == 1; }));
}

TEST_F(CallWatchTest, CallInAnotherThread_IsNotNoticed)
{
    const auto watch = watchWith(impatient);
    std::async(std::launch::async, [this] {
        const WatchedCall call([] { return u"the store"_s; });
        EXPECT_EQ(seen_.noticesAfter(400ms), 0);
    }).get();
}

TEST_F(CallWatchTest, BetweenTwoCalls_NothingIsNoticed)
{
    const auto watch = watchWith(impatient);
    {
        const WatchedCall call([] { return u"the store"_s; });
    }
    EXPECT_EQ(seen_.noticesAfter(400ms), 0);
}

TEST_F(CallWatchTest, WithoutAWatch_ACallDoesNothing)
{
    const WatchedCall call([] { return u"the store"_s; });
    EXPECT_EQ(seen_.noticesAfter(0ms), 0);
}
