#include "shop/planning/best_fit.h"

#include <algorithm>
#include <limits>
#include <map>

namespace shop::planning {

namespace {

void put(int type, Pattern& pattern)
{
    if (!pattern.empty() && pattern.back().type == type)
        ++pattern.back().count;
    else
        pattern.push_back({type, 1});
}

/// A sum of sizes, stored as a number of whole bars and a remainder, because the plain sum of the
/// sizes of an order can overflow.
class SumOfSizes
{
public:
    explicit SumOfSizes(Size capacity) : capacity_(capacity) {}

    void add(Size size, int count)
    {
        const Size most = std::numeric_limits<Size>::max() / 2 / capacity_;
        for (Size left = count; left > 0; left -= most) {
            rest_ += size * std::min(left, most);
            bars_ += static_cast<long>(rest_ / capacity_);
            rest_ %= capacity_;
        }
    }

    /// Returns the sum of the sizes as a number of bars, rounded up.
    long bars() const { return bars_ + (rest_ > 0 ? 1 : 0); }

private:
    Size capacity_;
    long bars_ = 0;
    Size rest_ = 0;
};

/// Returns a lower bound of the number of bars. Only pieces of at least the size `smallest` are
/// counted. A piece that leaves no room for a piece of that size needs a bar of its own. The
/// remaining pieces need the greater of two numbers of bars: the number of pieces longer than half
/// a bar, and the number of bars for their total size.
long boundFrom(const Problem& problem, Size smallest)
{
    long large = 0;
    long medium = 0;
    SumOfSizes others(problem.capacity);
    for (std::size_t i = 0; i < problem.types() && problem.sizes[i] >= smallest; ++i) {
        const Size size = problem.sizes[i];
        if (size > problem.capacity - smallest) {
            large += problem.demand[i];
            continue;
        }
        others.add(size, problem.demand[i]);
        if (2 * size > problem.capacity)
            medium += problem.demand[i];
    }
    return large + std::max(medium, others.bars());
}

} // namespace

Packing bestFitDecreasing(const Problem& problem)
{
    std::vector<Pattern> bars;
    // The started bars, sorted by remaining room. Bars with the same room are in the order in which
    // they were started.
    std::multimap<Size, std::size_t> byRoom;
    for (std::size_t type = 0; type < problem.types(); ++type) {
        const Size size = problem.sizes[type];
        for (int i = 0; i < problem.demand[type]; ++i) {
            const auto fit = byRoom.lower_bound(size);
            std::size_t bar = bars.size();
            Size room = problem.capacity;
            if (fit == byRoom.end()) {
                bars.emplace_back();
            } else {
                room = fit->first;
                bar = fit->second;
                byRoom.erase(fit);
            }
            put(static_cast<int>(type), bars[bar]);
            byRoom.emplace(room - size, bar);
        }
    }
    Packing packing;
    for (Pattern& each : bars)
        packing.push_back({std::move(each), 1});
    return bundled(packing);
}

int quickBound(const Problem& problem)
{
    long bound = 0;
    for (const Size size : problem.sizes)
        bound = std::max(bound, boundFrom(problem, std::min(size, problem.capacity / 2)));
    return static_cast<int>(bound);
}

} // namespace shop::planning
