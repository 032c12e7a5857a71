// The planner with a solver that fails. This binary replaces a function of the solver by
// one that throws.

#include "shop/planning/planner.h"

#include <gtest/gtest.h>

#include <ClpSimplex.hpp>
#include <CoinError.hpp>

#include <algorithm>

namespace {

int solverCalls = 0;

} // namespace

int ClpSimplex::primal(int /*ifValuesPass*/, int /*startFinishOptions*/)
{
    ++solverCalls;
    throw CoinError("no memory", "primal", "ClpSimplex");
}

// By hand: the pieces take 259 of 2 bars of 132, but 2 bars cannot hold them all, so that the
// search needs the solver: with 44 and 33 on one bar, 12 fits there 4 times and once beside
// 44+33+33; with 33+33+33 twice and 3 times beside 44+44; with 33+33 5 times and not at all beside
// 44+44+33.
TEST(SolverFailureTest, SolverThatFails_LeavesThePlanFoundWithoutIt)
{
    shop::BarSettings settings;
    settings.barLength = 132;
    settings.kerf = 0;
    settings.trim = 0;
    const shop::planning::BarPlan plan =
        shop::planning::planBars({{44, 2}, {33, 3}, {12, 6}}, settings);
    EXPECT_GT(solverCalls, 0);
    EXPECT_EQ(plan.barCount(), 3);
    EXPECT_EQ(plan.bound, 2);
    EXPECT_FALSE(plan.proved);
    std::vector<double> lengths;
    for (const shop::planning::PlannedBars& bars : plan.bars) {
        for (int bar = 0; bar < bars.count; ++bar)
            lengths.insert(lengths.end(), bars.lengths.begin(), bars.lengths.end());
    }
    std::sort(lengths.begin(), lengths.end());
    EXPECT_EQ(lengths, (std::vector<double>{12, 12, 12, 12, 12, 12, 33, 33, 33, 44, 44}));
}
