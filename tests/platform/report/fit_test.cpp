#include "platform/report/fit.h"

#include <gtest/gtest.h>

using report::Fit;
using report::fitted;

namespace {

struct Case
{
    double natural;
    double available;
    Fit fit;
};

TEST(Fit, CondensesThenReducesThenTruncates)
{
    const Case cases[] = {
        {0, 600, {100, 100, false}},        // No text.
        {599, 600, {100, 100, false}},      // Narrower than the width.
        {600, 600, {100, 100, false}},      // Exactly as wide.
        {606, 600, {99, 100, false}},       // 99.0 %.
        {640, 600, {93, 100, false}},       // 93.75 %, rounded down.
        {800, 600, {75, 100, false}},       // Condensed to the limit.
        {808, 600, {75, 99, false}},        // 606 wide at 75 %.
        {1000, 600, {75, 80, false}},       // 750 wide at 75 %.
        {4000 / 3.0, 600, {75, 60, false}}, // 1000 wide at 75 %: reduced to the limit.
        {1340, 600, {75, 100, true}},       // 1005 wide at 75 %.
        {100000, 600, {75, 100, true}},
    };
    for (const Case& each : cases) {
        const Fit fit = fitted(each.natural, each.available);
        EXPECT_EQ(fit.stretch, each.fit.stretch) << each.natural;
        EXPECT_EQ(fit.size, each.fit.size) << each.natural;
        EXPECT_EQ(fit.isCut, each.fit.isCut) << each.natural;
    }
}

TEST(Fit, NeverDrawsWiderThanTheWidth)
{
    for (int natural = 601; natural <= 1333; ++natural) {
        const Fit fit = fitted(natural, 600);
        ASSERT_FALSE(fit.isCut) << natural;
        EXPECT_LE(natural * fit.horizontal(), 600 + 1e-6) << natural;
    }
}

TEST(Fit, SizeReductionScalesWidthAndHeight)
{
    const Fit fit{.stretch = 75, .size = 80};
    EXPECT_DOUBLE_EQ(fit.horizontal(), 0.6);
    EXPECT_DOUBLE_EQ(fit.vertical(), 0.8);
}

} // namespace
