#include "shop/planning/bundling.h"

#include <algorithm>
#include <cmath>

namespace shop::planning {

namespace {

constexpr int stepsOfWholeTypes = 400;
constexpr int stepsOfAnyPieces = 800;

} // namespace

Bundling::Bundling(const Problem& problem, int bars, std::uint64_t seed)
    : problem_(problem), bars_(bars), dice_(seed), anySearch_(problem), whole_(problem),
      wholeSearch_(whole_)
{
}

Packing Bundling::next(const Limits& limits)
{
    Packing packing;
    left_ = problem_.demand;
    barsLeft_ = bars_;
    slack_ = static_cast<double>(problem_.capacity) * bars_;
    for (std::size_t i = 0; i < problem_.types(); ++i)
        slack_ -= static_cast<double>(problem_.sizes[i]) * problem_.demand[i];
    setValues();
    tolerance_ = 0.3 + 1.2 * dice_.next();
    int times = std::max(1, *std::max_element(left_.begin(), left_.end()));
    while (!isEmpty(left_)) {
        if (limits.isOver())
            return {};
        const double fair = slack_ / std::max(1, barsLeft_);
        Choice choice = wholeTypes(times);
        const Size waste = problem_.capacity - sizeOf(problem_, choice.pattern);
        if (!choice.pattern.empty() && static_cast<double>(waste) <= tolerance_ * fair) {
            take(choice, packing);
        } else if (times > 1) {
            times = times > 4 ? times * 3 / 4 : times - 1;
        } else {
            take(anyPieces(), packing);
        }
    }
    return bundled(packing);
}

/// Sets the value of each piece to its size raised to a power slightly above 1. So large pieces
/// have a higher value in proportion to their size and are cut first.
void Bundling::setValues()
{
    power_ = 1 + 0.05 * dice_.next();
    values_.clear();
    for (const Size size : problem_.sizes)
        values_.push_back(
            std::pow(static_cast<double>(size) / static_cast<double>(problem_.capacity), power_));
}

Bundling::Choice Bundling::wholeTypes(int times)
{
    whole_ = problem_.withDemand(std::vector<int>(problem_.types(), 0));
    wholeValues_ = values_;
    for (std::size_t i = 0; i < problem_.types(); ++i) {
        const int together = left_[i] / times;
        if (left_[i] % times != 0 || together == 0 ||
            together > problem_.capacity / problem_.sizes[i])
            continue;
        whole_.sizes[i] = problem_.sizes[i] * together;
        whole_.demand[i] = 1;
        if (together > 1)
            wholeValues_[i] *= std::pow(together, power_);
    }
    Choice choice{wholeSearch_.best(wholeValues_, whole_.demand, stepsOfWholeTypes), times};
    for (Item& each : choice.pattern)
        each.count = left_[static_cast<std::size_t>(each.type)] / times;
    return choice;
}

Bundling::Choice Bundling::anyPieces()
{
    Choice choice{anySearch_.best(values_, left_, stepsOfAnyPieces), 0};
    choice.times = timesWithin(choice.pattern, left_);
    return choice;
}

void Bundling::take(const Choice& choice, Packing& packing)
{
    takeOut(choice.pattern, choice.times, left_);
    packing.push_back({choice.pattern, choice.times});
    slack_ -=
        choice.times * static_cast<double>(problem_.capacity - sizeOf(problem_, choice.pattern));
    barsLeft_ -= choice.times;
}

} // namespace shop::planning
