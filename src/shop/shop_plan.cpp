#include "shop/shop_plan.h"

#include "shop/planning/planner.h"

#include <algorithm>
#include <future>
#include <mutex>
#include <numeric>
#include <optional>
#include <system_error>
#include <thread>

namespace shop {

namespace {

/// Assigns the pieces of a group to cuts: take() returns the pieces of one length one after the
/// other, in their given order.
class PieceQueues
{
public:
    explicit PieceQueues(std::vector<Piece> pieces) : pieces_(std::move(pieces))
    {
        std::stable_sort(pieces_.begin(), pieces_.end(),
                         [](const Piece& a, const Piece& b) { return a.length > b.length; });
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            if (firsts_.empty() ||
                pieces_[firsts_.back()].length - pieces_[i].length >= lengthNoise)
                firsts_.push_back(i);
        }
        next_ = firsts_;
    }

    std::vector<planning::Demand> demands() const
    {
        std::vector<planning::Demand> demands;
        for (std::size_t i = 0; i < firsts_.size(); ++i) {
            const std::size_t end = i + 1 < firsts_.size() ? firsts_[i + 1] : pieces_.size();
            demands.push_back({pieces_[firsts_[i]].length, static_cast<int>(end - firsts_[i])});
        }
        return demands;
    }

    /// Returns the next piece of the given length. The length must be one of those that demands()
    /// returns.
    const Piece& take(double length)
    {
        const auto found = std::lower_bound(
            firsts_.begin(), firsts_.end(), length,
            [&](std::size_t first, double sought) { return pieces_[first].length > sought; });
        return pieces_[next_[static_cast<std::size_t>(found - firsts_.begin())]++];
    }

private:
    std::vector<Piece> pieces_;
    std::vector<std::size_t> firsts_; ///< The position of the first piece of each length.
    std::vector<std::size_t> next_;
};

GroupPlan planGroup(const GroupKey& group, const std::vector<Piece>& pieces,
                    const BarSettings& settings, const planning::Limits& limits)
{
    PieceQueues queues(pieces);
    const planning::BarPlan planned = planning::planBars(queues.demands(), settings, limits);
    GroupPlan plan{group, settings, planned.bound, planned.proved, planned.stops, {}};
    for (const planning::PlannedBars& each : planned.bars) {
        GroupBars bars{.count = each.count, .rest = each.rest, .pieces = {}};
        for (int bar = 0; bar < each.count; ++bar) {
            for (const double length : each.lengths)
                bars.pieces.push_back(queues.take(length));
        }
        plan.bars.push_back(std::move(bars));
    }
    return plan;
}

using PiecesByGroup = std::map<GroupKey, std::vector<Piece>>;

/// A queue of the groups of pieces to plan. Several threads take the next group from the queue and
/// plan it.
class GroupQueue
{
public:
    GroupQueue(const PiecesByGroup& groups, const SettingsByGroup& settings,
               const planning::Limits& limits, const PlanProgress& progress)
        : settings_(settings), limits_(limits), progress_(progress), plans_(groups.size())
    {
        for (const auto& each : groups)
            groups_.push_back(&each);
    }

    /// Plans groups from the queue until the queue is empty.
    void work()
    {
        while (const std::optional<std::size_t> mine = next()) {
            const auto& [group, pieces] = *groups_[*mine];
            plans_[*mine] = planGroup(group, pieces, settingsOf(settings_, group), limits_);
            report();
        }
    }

    std::vector<GroupPlan> take() { return std::move(plans_); }

private:
    std::optional<std::size_t> next()
    {
        const std::lock_guard lock(guard_);
        return next_ < groups_.size() ? std::optional(next_++) : std::nullopt;
    }

    void report()
    {
        const std::lock_guard lock(guard_);
        ++done_;
        if (progress_)
            progress_(done_, groups_.size());
    }

    std::vector<const PiecesByGroup::value_type*> groups_;
    const SettingsByGroup& settings_;
    const planning::Limits& limits_;
    const PlanProgress& progress_;
    std::vector<GroupPlan> plans_;
    std::mutex guard_;
    std::size_t next_ = 0;
    std::size_t done_ = 0;
};

/// Starts another thread that plans groups from the queue. Returns an empty optional if the system
/// cannot start a thread.
std::optional<std::future<void>> workerOf(GroupQueue& queue)
{
    try {
        return std::async(std::launch::async, [&queue] { queue.work(); });
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

int GroupPlan::barCount() const
{
    return std::accumulate(bars.begin(), bars.end(), 0,
                           [](int sum, const GroupBars& each) { return sum + each.count; });
}

std::vector<GroupPlan> planGroups(const std::vector<Piece>& pieces, const SettingsByGroup& settings,
                                  const planning::Limits& limits, const PlanProgress& progress)
{
    PiecesByGroup groups;
    for (const Piece& each : pieces)
        groups[each.group].push_back(each);
    GroupQueue queue(groups, settings, limits, progress);
    std::vector<std::future<void>> others;
    const std::size_t threads = std::max(1U, std::thread::hardware_concurrency());
    for (std::size_t i = 1; i < std::min(threads, groups.size()); ++i) {
        if (std::optional<std::future<void>> other = workerOf(queue))
            others.push_back(std::move(*other));
    }
    queue.work();
    for (std::future<void>& each : others)
        each.get();
    return queue.take();
}

} // namespace shop
