#include "calculation/explained_cuts.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using cuts::ComputedLine;
using cuts::TodaysSeries;

namespace {

/// A sliding window with two sashes. It takes 0.6 off the frame, 2.8 and 6.5 off the sash.
TodaysSeries sliding()
{
    return {.series = {.deductions = {{{-0.6, -0.6}, {-2.8, -6.5}, {-19.6, -19.7}, {2.4, 0.0}}},
                       .kanafNum = 2.0}};
}

/// A formula as the tool tip shows it, in left-to-right order.
QString formula(const QString& text)
{
    return u"\u2066"_s + text + u"\u2069"_s;
}

// By hand: (120 - 2.8) / 2 = 58.6, 100 - 6.5 = 93.5, (120 - 19.6) / 2 = 50.2, 100 - 19.7 = 80.3,
// (120 + 2.4) / 2 = 61.2.
ComputedLine window()
{
    ComputedLine line;
    line.opening = {120, 100};
    line.parts = {{{119.4, 99.4}, {58.6, 93.5}, {50.2, 80.3}, {61.2, 100}}};
    return line;
}

} // namespace

TEST(ExplainedCuts, WidthOfASashShowsOpeningDeductionDivisorAndResult)
{
    EXPECT_EQ(explainedWidth(window(), cuts::Kanaf, sliding()),
              formula(u"(120 − 2.8) ÷ 2 = 58.6"_s));
    EXPECT_EQ(explainedHeight(window(), cuts::Kanaf, sliding()), formula(u"100 − 6.5 = 93.5"_s));
}

TEST(ExplainedCuts, FrameIsNotDivided)
{
    EXPECT_EQ(explainedWidth(window(), cuts::Mashkof, sliding()), formula(u"120 − 0.6 = 119.4"_s));
}

TEST(ExplainedCuts, AdditionIsShownAsPlus)
{
    EXPECT_EQ(explainedWidth(window(), cuts::Reshet, sliding()),
              formula(u"(120 + 2.4) ÷ 2 = 61.2"_s));
}

// By hand: 120.5 - 2.5 = 118, (118 - 2.8) / 2 = 57.6; 100 - 18 = 82, 82 - 6.5 = 75.5.
TEST(ExplainedCuts, MonoblockShowsItsOwnDeductionFirst)
{
    ComputedLine line;
    line.opening = {120.5, 100};
    line.isMonoblock = true;
    line.reduced = {118, 82};
    line.parts[cuts::Kanaf] = {57.6, 75.5};
    EXPECT_EQ(explainedWidth(line, cuts::Kanaf, sliding()),
              formula(u"((120.5 − 2.5) − 2.8) ÷ 2 = 57.6"_s));
    EXPECT_EQ(explainedHeight(line, cuts::Kanaf, sliding()), formula(u"(100 − 18) − 6.5 = 75.5"_s));
}

// 160 - 157.2 is 2.8000000000000114 in binary fractions.
TEST(ExplainedCuts, MonoblocksDeductionHasNoNoiseOfTheSubtraction)
{
    ComputedLine line;
    line.opening = {160, 120};
    line.isMonoblock = true;
    line.reduced = {157.2, 102};
    line.parts[cuts::Kanaf] = {77.2, 95.5};
    EXPECT_EQ(explainedWidth(line, cuts::Kanaf, sliding()),
              formula(u"((160 − 2.8) − 2.8) ÷ 2 = 77.2"_s));
}

// By hand: 90 - 2 * 4 = 82, 82 - 0.8 = 81.2; 210 - 4 = 206, 206 - 1.2 = 204.8.
TEST(ExplainedCuts, DoorShowsTheThicknessOfItsFrame)
{
    const TodaysSeries door{
        .series = {.deductions = {{{0.0, 0.0}, {-0.8, -1.2}, {0.0, 0.0}, {0.0, 0.0}}},
                   .kanafNum = 1.0},
        .isDoor = true};
    ComputedLine line;
    line.opening = {90, 210};
    line.doorThickness = 4;
    line.parts = {{{90, 210}, {81.2, 204.8}, {0, 0}, {0, 0}}};
    EXPECT_EQ(explainedWidth(line, cuts::Kanaf, door), formula(u"(90 − 2 × 4) − 0.8 = 81.2"_s));
    EXPECT_EQ(explainedHeight(line, cuts::Kanaf, door), formula(u"(210 − 4) − 1.2 = 204.8"_s));
    EXPECT_EQ(explainedWidth(line, cuts::Glass, door), QString());
    EXPECT_TRUE(followsFrom(line, door));
}

TEST(ExplainedCuts, SeriesThatWasChangedSinceIsTold)
{
    TodaysSeries changed = sliding();
    changed.series.deductions[cuts::Kanaf].width = -3.8;
    EXPECT_TRUE(followsFrom(window(), sliding()));
    EXPECT_FALSE(followsFrom(window(), changed));
    const QString text = explainedWidth(window(), cuts::Kanaf, changed);
    EXPECT_TRUE(text.contains(formula(u"(120 − 3.8) ÷ 2 = 58.1"_s))) << text.toStdString();
    EXPECT_TRUE(text.contains(u"הסדרה שונתה"_s) && text.contains(formula(u"58.6"_s)));
}

TEST(ExplainedCuts, SeriesThatCannotBeComputedExplainsNothing)
{
    TodaysSeries broken = sliding();
    broken.series.kanafNum = 0.0;
    EXPECT_EQ(explainedWidth(window(), cuts::Kanaf, broken), QString());
    broken = sliding();
    broken.series.deductions[cuts::Kanaf].width.reset();
    EXPECT_EQ(explainedWidth(window(), cuts::Kanaf, broken), QString());
}

// By hand: (100 - 8) / 4 = 23; (100 - 8) / 4.5 is 20.4.
TEST(ExplainedCuts, SlatsAreShownOnlyIfTheirThicknessGivesTheActualNumber)
{
    const cuts::Size opening{120, 100};
    EXPECT_EQ(cuts::explainedSlats(opening, 4, 23), formula(u"(100 − 8) ÷ 4 = 23"_s));
    EXPECT_EQ(cuts::explainedSlats(opening, 4.5, 20), formula(u"(100 − 8) ÷ 4.5 ≈ 20"_s));
    EXPECT_EQ(cuts::explainedSlats(opening, 4.5, 21), QString());
    EXPECT_EQ(cuts::explainedSlats(opening, 0, 23), QString());
}

// By hand: 100 - 17.6 = 82.4.
TEST(ExplainedCuts, DifferenceIsShownOnlyIfItGivesTheActualSize)
{
    EXPECT_EQ(cuts::explainedDifference(100, 17.6, 82.4), formula(u"100 − 17.6 = 82.4"_s));
    EXPECT_EQ(cuts::explainedDifference(100, 17.6, 82.5), QString());
}
