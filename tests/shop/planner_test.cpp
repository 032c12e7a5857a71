#include "shop/planning/planner.h"

#include "shop/planning/best_fit.h"
#include "shop/planning/diving.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <random>

using shop::BarSettings;
using shop::planning::BarPlan;
using shop::planning::Demand;
using shop::planning::planBars;
using shop::planning::PlannedBars;

namespace {

BarSettings bar(double length, double kerf = 0, double trim = 0)
{
    BarSettings settings;
    settings.barLength = length;
    settings.kerf = kerf;
    settings.trim = trim;
    return settings;
}

/// Returns the frames of random windows in hundredths, with two pieces of each length.
std::vector<Demand> seededGroup(unsigned seed, int windows)
{
    std::mt19937 dice(seed);
    std::vector<Demand> pieces;
    for (int i = 0; i < windows; ++i) {
        pieces.push_back({(4000 + dice() % 21000) / 100.0, 2});
        pieces.push_back({(4000 + dice() % 18000) / 100.0, 2});
    }
    return pieces;
}

std::vector<double> lengthsOf(const BarPlan& plan)
{
    std::vector<double> all;
    for (const PlannedBars& bars : plan.bars) {
        for (int i = 0; i < bars.count; ++i)
            all.insert(all.end(), bars.lengths.begin(), bars.lengths.end());
    }
    std::sort(all.begin(), all.end());
    return all;
}

std::vector<double> lengthsOf(const std::vector<Demand>& pieces)
{
    std::vector<double> all;
    for (const Demand& each : pieces)
        all.insert(all.end(), static_cast<std::size_t>(each.count), each.length);
    std::sort(all.begin(), all.end());
    return all;
}

bool isSame(const BarPlan& one, const BarPlan& other)
{
    return std::equal(one.bars.begin(), one.bars.end(), other.bars.begin(), other.bars.end(),
                      [](const PlannedBars& a, const PlannedBars& b) {
                          return a.count == b.count && a.lengths == b.lengths;
                      });
}

} // namespace

TEST(PlannerTest, NoPieces_NeedNoBar)
{
    const BarPlan plan = planBars({}, bar(600));
    EXPECT_TRUE(plan.bars.empty());
    EXPECT_EQ(plan.bound, 0);
    EXPECT_TRUE(plan.proved);
    EXPECT_EQ(plan.stops, 0);
}

TEST(PlannerTest, LastPiece_NeedsNoKerfIfTheBarEndsThere)
{
    // 3 x 199 and 2 kerfs of 0.5 are 598, which a bar of 600 with trims of 1 holds.
    EXPECT_EQ(planBars({{199, 3}}, bar(600, 0.5, 1)).barCount(), 1);
    EXPECT_EQ(planBars({{199, 3}}, bar(600, 0.5, 1)).bars.front().rest, 0);
    EXPECT_EQ(planBars({{199.01, 3}}, bar(600, 0.5, 1)).barCount(), 2);
}

TEST(PlannerTest, Rest_IsReducedByTheLastKerfOrIsZero)
{
    // 598 - 2 x 100 - 2 x 0.5 = 397
    EXPECT_DOUBLE_EQ(planBars({{100, 2}}, bar(600, 0.5, 1)).bars.front().rest, 397);
    // 598 - 597.8 = 0.2, less than the kerf
    EXPECT_EQ(planBars({{597.8, 1}}, bar(600, 0.5, 1)).bars.front().rest, 0);
}

TEST(PlannerTest, Fit_DependsOnTheExactLengths)
{
    // A difference below 1e-9 is noise; anything above does not fit.
    EXPECT_EQ(planBars({{50 + 2e-10, 2}}, bar(100)).barCount(), 1);
    EXPECT_EQ(planBars({{50 + 2e-9, 2}}, bar(100)).barCount(), 2);
    EXPECT_EQ(planBars({{100.0 / 3, 3}}, bar(100)).barCount(), 1);
    EXPECT_EQ(planBars({{100.0 / 3 + 1e-8, 3}}, bar(100)).barCount(), 2);
}

TEST(PlannerTest, BestFitWastesABar_FindsTheBetterPlan)
{
    // 5+3+2 and 4+3+3 fill two bars of 10. Best-fit decreasing begins with 5+4, then 3+3+3, and has
    // no room left for 2.
    const std::vector<Demand> pieces{{5, 1}, {4, 1}, {3, 3}, {2, 1}};
    EXPECT_EQ(shop::planning::planByBestFit(pieces, bar(10)).barCount(), 3);
    const BarPlan plan = planBars(pieces, bar(10));
    EXPECT_EQ(plan.barCount(), 2);
    EXPECT_EQ(plan.bound, 2);
    EXPECT_TRUE(plan.proved);
}

TEST(PlannerTest, BoundBelowTheBars_IsNotProved)
{
    // The lengths take 259 of 2 x 132. Two bars cannot hold them: with 44 and 33 on one, 12 fits
    // there 4 times and once beside 44+33+33; with 33+33+33 twice and 3 times beside 44+44; with
    // 33+33 5 times and not at all beside 44+44+33. That is never 6 times.
    const BarPlan plan = planBars({{44, 2}, {33, 3}, {12, 6}}, bar(132));
    EXPECT_EQ(plan.barCount(), 3);
    EXPECT_GE(plan.bound, 2);
    EXPECT_EQ(plan.proved, plan.bound == 3);
}

TEST(PlannerTest, EqualBars_AreJoined)
{
    const BarPlan plan = planBars({{60, 7}, {40, 7}}, bar(100));
    ASSERT_EQ(plan.bars.size(), 1U);
    EXPECT_EQ(plan.bars.front().count, 7);
    EXPECT_EQ(plan.stops, 2);
}

TEST(PlannerTest, PlansWithEqualBars_TheOneWithFewestStopsIsTaken)
{
    // In two bars: 50+50 and 40+40 set the stop twice; 50+40 twice also does, as one bundle; each
    // mixture needs more.
    EXPECT_EQ(planBars({{50, 2}, {40, 2}}, bar(100)).stops, 2);
    // Four bars of 50+50 or 50+30: the stop stays on 50 from one bar to the next.
    const BarPlan plan = planBars({{50, 5}, {30, 1}}, bar(100));
    EXPECT_EQ(plan.barCount(), 3);
    EXPECT_EQ(plan.stops, 2);
}

TEST(PlannerTest, PlansWithEqualStops_TheOneWithTheLongestRestIsTaken)
{
    // 2 x 30 and 2 x 20 in two bars of 90: 30+30+20 | 20 leaves 70 but sets the stop three times,
    // unless the bars are cut as 30 30 20 | 20.
    const BarPlan plan = planBars({{30, 2}, {20, 2}}, bar(90));
    EXPECT_EQ(plan.barCount(), 2);
    EXPECT_EQ(plan.stops, 2);
    double longest = 0;
    for (const PlannedBars& each : plan.bars)
        longest = std::max(longest, each.rest);
    EXPECT_EQ(longest, 70);
}

TEST(PlannerTest, EveryPiece_IsCutOnce)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const std::vector<Demand> pieces = seededGroup(seed, 30);
        const BarPlan plan = planBars(pieces, bar(600, 0.5, 1));
        EXPECT_EQ(lengthsOf(plan), lengthsOf(pieces));
    }
}

TEST(PlannerTest, SeededGroups_NeedAtMostOneBarAboveTheBoundAndNoMoreThanBestFit)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const std::vector<Demand> pieces = seededGroup(seed, static_cast<int>(5 + seed * 2));
        const BarPlan plan = planBars(pieces, bar(600, 0.5, 1));
        const BarPlan simple = shop::planning::planByBestFit(pieces, bar(600, 0.5, 1));
        EXPECT_LE(plan.barCount(), plan.bound + 1) << seed;
        EXPECT_LE(plan.barCount(), simple.barCount()) << seed;
        EXPECT_GE(plan.bound, simple.bound) << seed;
        EXPECT_EQ(plan.proved, plan.barCount() == plan.bound) << seed;
    }
}

TEST(PlannerTest, SamePieces_GiveTheSamePlan)
{
    const std::vector<Demand> pieces = seededGroup(3, 25);
    std::vector<Demand> reversed(pieces.rbegin(), pieces.rend());
    const BarPlan plan = planBars(pieces, bar(600, 0.5, 1));
    EXPECT_TRUE(isSame(plan, planBars(pieces, bar(600, 0.5, 1))));
    EXPECT_TRUE(isSame(plan, planBars(reversed, bar(600, 0.5, 1))));
}

TEST(PlannerTest, CancelledBeforeTheStart_ReturnsTheBestFitPlan)
{
    const std::atomic<bool> cancelled = true;
    const std::vector<Demand> pieces = seededGroup(4, 60);
    const BarPlan plan = planBars(pieces, bar(600, 0.5, 1), {&cancelled, {}});
    EXPECT_EQ(lengthsOf(plan), lengthsOf(pieces));
    EXPECT_LE(plan.bound, plan.barCount());
    EXPECT_EQ(plan.barCount(), shop::planning::planByBestFit(pieces, bar(600, 0.5, 1)).barCount());
}

TEST(PlannerTest, ThousandsOfTinyPieces_ArePlanned)
{
    const BarPlan plan = planBars({{0.01, 30000}}, bar(100));
    EXPECT_EQ(plan.barCount(), 3);
    EXPECT_TRUE(plan.proved);
    EXPECT_EQ(plan.stops, 1);
}

TEST(PlannerTest, SizesWhoseSumExceedsTheirType_ArePlanned)
{
    // 40,000 x 300 is 1.2e19 in the planner's units, more than a 64-bit integer holds.
    const BarPlan plan = planBars({{300, 40000}}, bar(600));
    EXPECT_EQ(plan.barCount(), 20000);
    EXPECT_EQ(plan.bound, 20000);
    EXPECT_TRUE(plan.proved);
}

TEST(PlannerTest, PieceLongerThanTheBarByNoise_HasABarOfItsOwn)
{
    const BarPlan plan = planBars({{100 + 0.995e-9, 2}}, bar(100));
    EXPECT_EQ(plan.barCount(), 2);
    EXPECT_EQ(plan.bars.front().rest, 0);
}

TEST(PlannerTest, LengthsNearZero_EndThePlanning)
{
    for (const double length : {1e-14, 1e-10, 1e-7}) {
        const std::vector<Demand> alone{{length, 5}};
        const BarPlan plan = planBars(alone, bar(600));
        EXPECT_EQ(plan.barCount(), 1) << length;
        EXPECT_EQ(lengthsOf(plan), lengthsOf(alone)) << length;
        // Two of 250 share a bar, three do not.
        const std::vector<Demand> mixed{{250, 3}, {length, 1}};
        EXPECT_EQ(planBars(mixed, bar(600)).barCount(), 2) << length;
        EXPECT_EQ(lengthsOf(planBars(mixed, bar(600))), lengthsOf(mixed)) << length;
    }
}

TEST(PlannerTest, BoundOfPrices_IsNotBelowThePriceOfABarWithManyPieces)
{
    const shop::planning::Problem problem{{5}, {700}, 3500};
    shop::planning::Pricing pricing(problem);
    for (int i = 1; i <= 25; ++i) {
        // A bar holds all 700 pieces. The rounding errors of so many additions grow up to 4e-5.
        const double price = i / 700'000.0;
        pricing.setPrices({price}, problem.demand);
        EXPECT_GE(pricing.bound(), 700 * price) << i;
        EXPECT_LE(pricing.bound(), 700 * price * (1 + 1e-4)) << i;
    }
}

TEST(PlannerTest, CancelledWhileItPlans_ReturnsACompletePlan)
{
    const std::vector<Demand> pieces = seededGroup(4, 200);
    std::atomic<bool> cancelled = false;
    std::future<BarPlan> planning = std::async(std::launch::async, [&] {
        return planBars(pieces, bar(600, 0.5, 1), {&cancelled, {}});
    });
    cancelled = true;
    const BarPlan plan = planning.get();
    EXPECT_EQ(lengthsOf(plan), lengthsOf(pieces));
    EXPECT_LE(plan.barCount(), shop::planning::planByBestFit(pieces, bar(600, 0.5, 1)).barCount());
}

TEST(PlannerTest, DeadlineDuringThePlanning_ReturnsACompletePlan)
{
    using std::chrono::steady_clock;
    const std::vector<Demand> pieces = seededGroup(4, 400);
    for (const int milliseconds : {1, 20, 100, 400}) {
        const BarPlan plan =
            planBars(pieces, bar(600, 0.5, 1),
                     {nullptr, steady_clock::now() + std::chrono::milliseconds(milliseconds)});
        EXPECT_EQ(lengthsOf(plan), lengthsOf(pieces));
        EXPECT_LE(plan.bound, plan.barCount());
    }
}

TEST(PlannerTest, DeadlineDuringBranchAndBound_EndsIt)
{
    using std::chrono::steady_clock;
    using namespace shop::planning;
    const Problem problem = problemOf(seededGroup(2, 60), bar(600, 0.5, 1));
    Columns columns(problem);
    for (const Cut& each : bestFitDecreasing(problem))
        columns.add(each.pattern);
    const int target = wholeBars(columns.solve(problem.demand, 1000, {}).bound);
    constexpr int unlimitedNodes = 2'000'000'000;
    // Without a deadline, the search of these few patterns does not end within minutes.
    const auto start = steady_clock::now();
    branchAndBound(columns, target, unlimitedNodes, {nullptr, start + std::chrono::seconds(1)});
    EXPECT_GE(steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(60));
}
