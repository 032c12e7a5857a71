#include "shop/planning/planner.h"

#include "shop/planning/best_fit.h"
#include "shop/planning/bundling.h"
#include "shop/planning/diving.h"
#include "shop/planning/filling.h"

#include <CoinError.hpp>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace shop::planning {

namespace {

constexpr double unitsPerMeasure = 1e12;
/// The tolerance of the sum of lengths on a bar. It is slightly below lengthNoise, so that a
/// checker that adds the lengths in another order accepts the same bars.
constexpr double toleranceOfSums = 0.99e-9;

Size sizeOfLength(double length)
{
    return std::llround(length * unitsPerMeasure);
}

/// The different lengths in a group of pieces and the cutting problem that results from them.
struct Group
{
    std::vector<Demand> types; ///< By descending length.
    Problem problem;
};

Group groupOf(std::vector<Demand> pieces, const BarSettings& settings)
{
    std::sort(pieces.begin(), pieces.end(),
              [](const Demand& a, const Demand& b) { return a.length > b.length; });
    Group group;
    for (const Demand& each : pieces) {
        if (!group.types.empty() && group.types.back().length - each.length < lengthNoise)
            group.types.back().count += each.count;
        else
            group.types.push_back(each);
    }
    for (const Demand& each : group.types) {
        // A piece with its kerf has at least the size 1 (1e-12). Any number of pieces of size 0
        // would fit on a bar.
        const Size size = sizeOfLength(each.length) + sizeOfLength(settings.kerf);
        group.problem.sizes.push_back(std::max<Size>(1, size));
        group.problem.demand.push_back(each.count);
    }
    group.problem.capacity = sizeOfLength(settings.usable()) + sizeOfLength(settings.kerf) +
                             sizeOfLength(toleranceOfSums);
    // A piece that is longer than the usable length by less than lengthNoise still counts as
    // fitting.
    if (!group.problem.sizes.empty())
        group.problem.capacity = std::max(group.problem.capacity, group.problem.sizes.front());
    return group;
}

/// The best packing (distribution of the pieces over bars) so far. Fewer bars are better. For the
/// same number of bars, setting the saw's stop less often is better, and after that a longer
/// longest rest (remainder of a bar).
class Choice
{
public:
    explicit Choice(const Problem& problem) : problem_(problem) {}

    bool isEmpty() const { return packing_.empty(); }
    int bars() const { return bars_; }
    int stops() const { return stops_; }
    const Packing& packing() const { return packing_; }
    const Sequence& sequence() const { return sequence_; }

    void offer(const Packing& packing)
    {
        if (packing.empty() || (!isEmpty() && barsOf(packing) > bars_))
            return;
        const Packing joined = bundled(packing);
        Sequence sequence = sequenced(joined);
        const int bars = barsOf(joined);
        const int stops = stopsOf(sequence);
        const Size rest = longestRest(joined);
        if (!isEmpty() && std::tuple(bars_, stops_, -rest_) <= std::tuple(bars, stops, -rest))
            return;
        packing_ = joined;
        sequence_ = std::move(sequence);
        bars_ = bars;
        stops_ = stops;
        rest_ = rest;
    }

private:
    Size longestRest(const Packing& packing) const
    {
        Size longest = 0;
        for (const Cut& each : packing)
            longest = std::max(longest, problem_.capacity - sizeOf(problem_, each.pattern));
        return longest;
    }

    const Problem& problem_;
    Packing packing_;
    Sequence sequence_;
    int bars_ = 0;
    int stops_ = 0;
    Size rest_ = 0;
};

/// The limits of each kind of search for a better plan: how often it is repeated, or for branch and
/// bound how many nodes it has. The numbers depend only on the problem and not on time, so that a
/// plan is reproducible. Large problems get fewer attempts.
struct Effort
{
    explicit Effort(const Problem& problem)
        : fillings(roundsFor(problem, 40000, 3, 100)), bundlings(roundsFor(problem, 60000, 4, 400)),
          columnRounds(problem.types() <= 400 ? 300 : 40), dives(problem.types() <= 400 ? 3 : 1),
          nodes(problem.types() <= 150 ? 60 : 0)
    {
    }

    int fillings;
    int bundlings;
    int columnRounds;
    int dives;
    int nodes;

private:
    static int roundsFor(const Problem& problem, long work, long fewest, long most)
    {
        return static_cast<int>(std::clamp(work / std::max(1L, problem.pieces()), fewest, most));
    }
};

/// Searches for a plan with fewer bars by solving the problem as a linear program. Stores a better
/// plan in `choice` and a higher lower bound in `bound`.
void searchColumns(const Problem& problem, const Packing& filled, const Effort& effort, int& bound,
                   Choice& choice, const Limits& limits)
{
    Columns columns(problem);
    for (const Packing& packing : {choice.packing(), filled}) {
        for (const Cut& each : packing)
            columns.add(each.pattern);
    }
    const Columns::Relaxed relaxed = columns.solve(problem.demand, effort.columnRounds, limits);
    bound = std::max(bound, wholeBars(relaxed.bound));
    for (int i = 0; i < effort.dives && choice.bars() > bound && !limits.isOver(); ++i)
        choice.offer(dive(columns, bound, static_cast<std::uint64_t>(i), limits));
    if (choice.bars() > bound && effort.nodes > 0)
        choice.offer(branchAndBound(columns, bound, effort.nodes, limits));
}

/// Searches for a better plan. Errors of the solver are ignored, because `choice` and `bound` still
/// contain the best results so far.
void improveByColumns(const Problem& problem, const Packing& filled, const Effort& effort,
                      int& bound, Choice& choice, const Limits& limits)
{
    try {
        searchColumns(problem, filled, effort, bound, choice, limits);
    } catch (const CoinError&) {
        return;
    }
}

void reduceStops(const Problem& problem, const Effort& effort, Choice& choice, const Limits& limits)
{
    // The saw's stop must be set at least once for each length. After this minimum is reached,
    // further attempts usually find only a longer rest, so only a few more are made.
    const int fewest = static_cast<int>(problem.types());
    Bundling bundling(problem, choice.bars(), 1);
    int triesForTheRest = effort.bundlings / 8;
    for (int i = 0; i < effort.bundlings && !limits.isOver(); ++i) {
        if (choice.stops() <= fewest && triesForTheRest-- == 0)
            return;
        choice.offer(bundling.next(limits));
    }
}

BarPlan planOf(const Group& group, const Sequence& sequence, const BarSettings& settings, int bound)
{
    BarPlan plan;
    for (const SequencedCut& each : sequence) {
        PlannedBars bars{.count = each.times, .rest = 0, .lengths = {}};
        for (const Item& item : each.items)
            bars.lengths.insert(bars.lengths.end(), static_cast<std::size_t>(item.count),
                                group.types[static_cast<std::size_t>(item.type)].length);
        const double used = std::accumulate(bars.lengths.begin(), bars.lengths.end(), 0.0) +
                            static_cast<double>(bars.lengths.size()) * settings.kerf;
        bars.rest = withoutNoise(std::max(0.0, settings.usable() - used));
        plan.bars.push_back(std::move(bars));
    }
    plan.bound = bound;
    plan.stops = stopsOf(sequence);
    plan.proved = plan.barCount() == bound;
    return plan;
}

} // namespace

int BarPlan::barCount() const
{
    return std::accumulate(bars.begin(), bars.end(), 0,
                           [](int sum, const PlannedBars& each) { return sum + each.count; });
}

Problem problemOf(std::vector<Demand> pieces, const BarSettings& settings)
{
    return groupOf(std::move(pieces), settings).problem;
}

BarPlan planBars(const std::vector<Demand>& pieces, const BarSettings& settings,
                 const Limits& limits)
{
    const Group group = groupOf(pieces, settings);
    const Problem& problem = group.problem;
    if (problem.types() == 0)
        return planOf(group, {}, settings, 0);
    const Effort effort(problem);
    Choice choice(problem);
    choice.offer(bestFitDecreasing(problem));
    int bound = quickBound(problem);
    if (choice.bars() > bound) {
        const Packing filled = SequentialFilling(problem, 1).run(effort.fillings, bound, limits);
        choice.offer(filled);
        if (choice.bars() > bound && !limits.isOver())
            improveByColumns(problem, filled, effort, bound, choice, limits);
    }
    reduceStops(problem, effort, choice, limits);
    return planOf(group, choice.sequence(), settings, bound);
}

BarPlan planByBestFit(const std::vector<Demand>& pieces, const BarSettings& settings)
{
    const Group group = groupOf(pieces, settings);
    const Packing packing = bestFitDecreasing(group.problem);
    return planOf(group, asItStands(packing), settings, quickBound(group.problem));
}

} // namespace shop::planning
