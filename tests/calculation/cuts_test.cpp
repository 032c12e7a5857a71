#include "calculation/cuts.h"
#include "support/errors.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using cuts::Part;
using testsupport::errorOf;

/// The series of all examples. What it takes off the opening, width and height:
/// frame 1 and 1.5, sash 4.2 and 7.5, glass 13.4 and 16, mesh 6.3 and 8.25.
cuts::Series series(double sashes)
{
    return {.deductions = {{{-1.0, -1.5}, {-4.2, -7.5}, {-13.4, -16.0}, {-6.3, -8.25}}},
            .kanafNum = sashes};
}

/// Widths and heights of frame, sash, glass and mesh, in turn.
std::vector<double> allCuts(const cuts::Series& of, const cuts::Size& base)
{
    std::vector<double> cells;
    for (const Part part : {cuts::Mashkof, cuts::Kanaf, cuts::Glass, cuts::Reshet}) {
        cells.push_back(cuts::cutWidth(of, part, base));
        cells.push_back(cuts::cutHeight(of, part, base));
    }
    return cells;
}

/// Compares to the last bit, because no result may be rounded. The expected values were calculated
/// by hand in decimals. The formula must give the double that is nearest to each of them.
void expectExactly(const std::vector<double>& actual, const std::vector<double>& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        EXPECT_EQ(actual[i], expected[i]) << "value " << i;
}

constexpr cuts::Size window{120.5, 100.25};
/// A monoblock whose shutter reduces the width by 2.5 and the height by 18. Its slats are 4.5 thick
/// and 12.7 shorter than the width of the opening.
constexpr cuts::Monoblock shutterBox{
    .widthDeduct = 2.5, .heightDeduct = 18, .shalavWidthDeduct = 12.7, .shalavThick = 4.5};

// By hand:         width                       height
//   frame  120.5 -  1   = 119.5     100.25 -  1.5  = 98.75
//   sash   120.5 -  4.2 = 116.3     100.25 -  7.5  = 92.75
//   glass  120.5 - 13.4 = 107.1     100.25 - 16    = 84.25
//   mesh   120.5 -  6.3 = 114.2     100.25 -  8.25 = 92
TEST(Cuts, OrdinaryWindowSubtractsTheDeductions)
{
    expectExactly(allCuts(series(1), window),
                  {119.5, 98.75, 116.3, 92.75, 107.1, 84.25, 114.2, 92});
}

// By hand, the widths of one sash halved: 116.3 / 2 = 58.15, 107.1 / 2 = 53.55, 114.2 / 2 = 57.1.
TEST(Cuts, TwoSashesShareTheWidthsOfSashGlassAndMesh)
{
    expectExactly(allCuts(series(2), window), {119.5, 98.75, 58.15, 92.75, 53.55, 84.25, 57.1, 92});
}

// By hand, the opening reduced to 120.5 - 2.5 = 118 by 100.25 - 18 = 82.25:
//   frame   118 -  1        = 117       82.25 -  1.5  = 80.75
//   sash   (118 -  4.2) / 2 =  56.9     82.25 -  7.5  = 74.75
//   glass  (118 - 13.4) / 2 =  52.3     82.25 - 16    = 66.25
//   mesh   (118 -  6.3) / 2 =  55.85    82.25 -  8.25 = 74
TEST(Cuts, MonoblockCutsUseTheReducedOpening)
{
    const cuts::Size reduced = cuts::shutter(window, shutterBox).reduced;
    expectExactly({reduced.width, reduced.height}, {118, 82.25});
    expectExactly(allCuts(series(2), reduced), {117, 80.75, 56.9, 74.75, 52.3, 66.25, 55.85, 74});
}

// By hand, from the full opening: U profile 100.25 - 14 = 86.25 and 100.25 - 17.6 = 82.65, slat
// 120.5 - 12.7 = 107.8, (100.25 - 8) / 4.5 = 92.25 / 4.5 = 20.5 slats, box as wide as the opening
// and 18 high.
TEST(Cuts, ShutterPartsUseTheFullOpening)
{
    const cuts::Shutter shutter = cuts::shutter(window, shutterBox);
    const double slats = cuts::shalavCount(window, shutterBox);
    expectExactly({shutter.uCut, shutter.uVasa, shutter.shalavWidth, slats, shutter.argaz.width,
                   shutter.argaz.height},
                  {86.25, 82.65, 107.8, 20.5, 120.5, 18});
}

// By hand: (3.5 - 8) / 4.5 = -4.5 / 4.5 = -1.
TEST(Cuts, SlatCountIsNegativeBelowItsAllowance)
{
    EXPECT_EQ(cuts::shalavCount({100, 3.5}, shutterBox), -1);
}

// By hand: 90 - 2 * 4 = 82 by 210 - 4 = 206; sash 82 - 4.2 = 77.8 by 206 - 7.5 = 198.5, and of
// two sashes 77.8 / 2 = 38.9 each.
TEST(Cuts, DoorFrameIsSubtractedAtBothSidesAndTheTop)
{
    const cuts::Size door = cuts::doorOpening({90, 210}, 4);
    expectExactly({door.width, door.height}, {82, 206});
    expectExactly({cuts::cutWidth(series(1), cuts::Kanaf, door),
                   cuts::cutHeight(series(1), cuts::Kanaf, door),
                   cuts::cutWidth(series(2), cuts::Kanaf, door)},
                  {77.8, 198.5, 38.9});
}

// By hand: 90 - 2 * 4.35 = 90 - 8.7 = 81.3 by 210 - 4.35 = 205.65.
TEST(Cuts, DoorThicknessIsDoubledWithItsHundredths)
{
    const cuts::Size door = cuts::doorOpening({90, 210}, 4.35);
    expectExactly({door.width, door.height}, {81.3, 205.65});
}

// By hand: 100.1 / 3 = 33.36666..., which has no finite decimal representation.
TEST(Cuts, ResultsWithoutDeductionsAreNotRounded)
{
    const cuts::Series none{.deductions = {{{0.0, 0.0}, {0.0, 0.0}, {0.0, 0.0}, {0.0, 0.0}}},
                            .kanafNum = 3.0};
    constexpr double third = 33.36666666666666666667;
    expectExactly(allCuts(none, {100.1, 50.3}),
                  {100.1, 50.3, third, 50.3, third, 50.3, third, 50.3});
}

// By hand: 1 - 16 = -15.
TEST(Cuts, DeductionLargerThanTheOpeningGivesANegativeCut)
{
    EXPECT_EQ(cuts::cutHeight(series(1), cuts::Glass, {1, 1}), -15);
}

TEST(Cuts, ZeroDivisorThrowsDivisionByZero)
{
    const auto sashWidth = [](double width, double sashes) {
        return errorOf([=] { cuts::cutWidth(series(sashes), cuts::Kanaf, {width, 1}); });
    };
    EXPECT_EQ(sashWidth(120, 0), runtime::DivisionByZero);
    EXPECT_EQ(sashWidth(4.2, 0), runtime::Overflow) << "nothing divided by nothing";
    EXPECT_EQ(errorOf([] { cuts::cutWidth(series(0), cuts::Mashkof, {1, 1}); }), 0);
    EXPECT_EQ(errorOf([] { cuts::cutHeight(series(0), cuts::Kanaf, {1, 1}); }), 0);
    const auto slats = [](double height) {
        return errorOf([=] { cuts::shalavCount({1, height}, cuts::Monoblock{}); });
    };
    EXPECT_EQ(slats(100), runtime::DivisionByZero);
    EXPECT_EQ(slats(8), runtime::Overflow);
}

TEST(Cuts, NullThrowsOnlyInAFormulaThatUsesIt)
{
    cuts::Series holed = series(0);
    holed.deductions[cuts::Glass].width.reset();
    EXPECT_EQ(errorOf([&] { cuts::cutHeight(holed, cuts::Glass, {1, 1}); }), 0);
    EXPECT_EQ(errorOf([&] {
                  cuts::cutWidth(holed, cuts::Glass, {1, 1});
              }),
              runtime::InvalidUseOfNull)
        << "a Null is not divided";
    holed = series(1);
    holed.kanafNum.reset();
    EXPECT_EQ(errorOf([&] { cuts::cutWidth(holed, cuts::Mashkof, {1, 1}); }), 0);
    EXPECT_EQ(errorOf([&] {
                  cuts::cutWidth(holed, cuts::Reshet, {1, 1});
              }),
              runtime::InvalidUseOfNull);
    holed.deductions[cuts::Reshet].height.reset();
    EXPECT_EQ(errorOf([&] {
                  cuts::cutHeight(holed, cuts::Reshet, {1, 1});
              }),
              runtime::InvalidUseOfNull);
}

TEST(Cuts, ResultBeyondADoubleThrowsOverflow)
{
    constexpr double huge = std::numeric_limits<double>::max();
    cuts::Series wide = series(1);
    wide.deductions[cuts::Kanaf] = {huge, huge};
    EXPECT_EQ(errorOf([&] { cuts::cutWidth(wide, cuts::Kanaf, {huge, 1}); }), runtime::Overflow);
    EXPECT_EQ(errorOf([&] { cuts::cutHeight(wide, cuts::Kanaf, {1, huge}); }), runtime::Overflow);
    EXPECT_EQ(errorOf([] { cuts::doorOpening({1, 1}, huge); }), runtime::Overflow);
}

} // namespace
