#include "shop/planning/filling.h"

#include <algorithm>
#include <cmath>

namespace shop::planning {

namespace {

constexpr int stepsOfAFilling = 600;
constexpr double gain = 1e-9; // The values are near the sizes in bars, between 0 and 1.

} // namespace

PatternSearch::PatternSearch(const Problem& problem) : problem_(problem) {}

Pattern PatternSearch::best(const std::vector<double>& values, const std::vector<int>& pieces,
                            int steps)
{
    candidates_.clear();
    for (std::size_t i = 0; i < problem_.types(); ++i) {
        if (pieces[i] > 0 && values[i] > 0)
            candidates_.push_back({static_cast<int>(i), problem_.sizes[i], values[i],
                                   values[i] / static_cast<double>(problem_.sizes[i]), pieces[i],
                                   0});
    }
    std::sort(candidates_.begin(), candidates_.end(), [](const Candidate& a, const Candidate& b) {
        return a.density != b.density ? a.density > b.density : a.type < b.type;
    });
    Size smallest = problem_.capacity + 1;
    for (std::size_t i = candidates_.size(); i-- > 0;) {
        smallest = std::min(smallest, candidates_[i].size);
        candidates_[i].smallestFrom = smallest;
    }
    current_.clear();
    best_.clear();
    bestValue_ = 0;
    steps_ = steps;
    search(0, problem_.capacity, 0);
    std::sort(best_.begin(), best_.end());
    return best_;
}

void PatternSearch::search(std::size_t first, Size room, double value)
{
    // The first pattern that is found is always kept, even if its value is below `gain`. A pattern
    // of very small pieces is better than an empty bar.
    if (value > bestValue_ + gain || (best_.empty() && !current_.empty())) {
        bestValue_ = value;
        best_ = current_;
    }
    --steps_;
    for (std::size_t i = first; i < candidates_.size(); ++i) {
        const Candidate& each = candidates_[i];
        const double bestPossible = value + static_cast<double>(room) * each.density;
        if (steps_ < 0 || room < each.smallestFrom ||
            (!best_.empty() && bestPossible <= bestValue_ + gain))
            return;
        if (each.size > room)
            continue;
        const int most = static_cast<int>(std::min<Size>(each.count, room / each.size));
        for (int count = most; count > 0; --count) {
            current_.push_back({each.type, count});
            search(i + 1, room - count * each.size, value + count * each.value);
            current_.pop_back();
        }
    }
}

SequentialFilling::SequentialFilling(const Problem& problem, std::uint64_t seed)
    : problem_(problem), search_(problem), dice_(seed)
{
    for (const Size size : problem.sizes)
        values_.push_back(static_cast<double>(size) / static_cast<double>(problem.capacity));
}

Packing SequentialFilling::run(int rounds, int target, const Limits& limits)
{
    Packing best;
    for (int i = 0; i < rounds && !limits.isOver(); ++i) {
        Packing packing = round(limits);
        if (packing.empty())
            break;
        if (best.empty() || barsOf(packing) < barsOf(best))
            best = std::move(packing);
        if (barsOf(best) <= target)
            break;
    }
    return best;
}

Packing SequentialFilling::round(const Limits& limits)
{
    Packing packing;
    std::vector<int> left = problem_.demand;
    while (!isEmpty(left)) {
        if (limits.isOver())
            return {};
        const Pattern pattern = search_.best(values_, left, stepsOfAFilling);
        const int times = timesWithin(pattern, left);
        takeOut(pattern, times, left);
        packing.push_back({pattern, times});
        correct(pattern);
    }
    return packing;
}

/// Adjusts the value of each type of piece in the pattern, so that pieces that cause waste become
/// more valuable. The new value is a randomly weighted mean of the old value and the quotient
/// `paid`. The quotient is a power of the piece's size, divided by the used fraction of the bar.
/// The exponent is slightly above 1, in favour of large pieces.
void SequentialFilling::correct(const Pattern& pattern)
{
    const double capacity = static_cast<double>(problem_.capacity);
    const double used = static_cast<double>(sizeOf(problem_, pattern)) / capacity;
    const double power = 1 + 0.06 * dice_.next();
    for (const Item& each : pattern) {
        const std::size_t type = static_cast<std::size_t>(each.type);
        const double size = static_cast<double>(problem_.sizes[type]) / capacity;
        const double paid = std::pow(size, power) / used;
        const double share = 0.2 + 0.6 * dice_.next();
        values_[type] = share * values_[type] + (1 - share) * paid;
    }
}

} // namespace shop::planning
