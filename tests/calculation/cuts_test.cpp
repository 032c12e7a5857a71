#include "calculation/cuts.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/run_time_error.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using cuts::Part;

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

void expectSameBits(const std::vector<double>& actual, const std::vector<double>& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        EXPECT_EQ(std::bit_cast<std::uint64_t>(actual[i]),
                  std::bit_cast<std::uint64_t>(expected[i]))
            << "cell " << i << ": " << actual[i] << " for " << expected[i];
}

void expectTexts(const std::vector<double>& actual, const QStringList& expected)
{
    QStringList texts;
    for (const double value : actual)
        texts.append(runtime::toText(value));
    EXPECT_EQ(texts, expected);
}

template <typename Formula>
int errorOf(Formula formula)
{
    try {
        formula();
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

constexpr cuts::Size window{50 / 100.0 + 120, 25 / 100.0 + 100};
constexpr cuts::Monoblock shutterBox{
    .widthDeduct = 2.5, .heightDeduct = 18, .shalavWidthDeduct = 12.7, .shalavThick = 4.5};

TEST(Cuts, OrdinaryWindowWithOneSash)
{
    const auto cells = allCuts(series(1), window);
    expectSameBits(cells,
                   {-1.0 + 120.5, -1.5 + 100.25, (-4.2 + 120.5) / 1, -7.5 + 100.25,
                    (-13.4 + 120.5) / 1, -16.0 + 100.25, (-6.3 + 120.5) / 1, -8.25 + 100.25});
    expectTexts(cells, {QStringLiteral("119.5"), QStringLiteral("98.75"), QStringLiteral("116.3"),
                        QStringLiteral("92.75"), QStringLiteral("107.1"), QStringLiteral("84.25"),
                        QStringLiteral("114.2"), QStringLiteral("92")});
}

TEST(Cuts, TwoSashesShareTheWidthsOfSashGlassAndMesh)
{
    const auto cells = allCuts(series(2), window);
    expectSameBits(cells,
                   {-1.0 + 120.5, -1.5 + 100.25, (-4.2 + 120.5) / 2, -7.5 + 100.25,
                    (-13.4 + 120.5) / 2, -16.0 + 100.25, (-6.3 + 120.5) / 2, -8.25 + 100.25});
    expectTexts(cells, {QStringLiteral("119.5"), QStringLiteral("98.75"), QStringLiteral("58.15"),
                        QStringLiteral("92.75"), QStringLiteral("53.55"), QStringLiteral("84.25"),
                        QStringLiteral("57.1"), QStringLiteral("92")});
}

TEST(Cuts, MonoblockCutsStandOnTheReducedOpening)
{
    const cuts::Shutter shutter = cuts::shutter(window, shutterBox);
    expectSameBits({shutter.reduced.width, shutter.reduced.height}, {120.5 - 2.5, 100.25 - 18});
    const auto cells = allCuts(series(2), shutter.reduced);
    expectSameBits(cells, {-1.0 + 118.0, -1.5 + 82.25, (-4.2 + 118.0) / 2, -7.5 + 82.25,
                           (-13.4 + 118.0) / 2, -16.0 + 82.25, (-6.3 + 118.0) / 2, -8.25 + 82.25});
    expectTexts(cells, {QStringLiteral("117"), QStringLiteral("80.75"), QStringLiteral("56.9"),
                        QStringLiteral("74.75"), QStringLiteral("52.3"), QStringLiteral("66.25"),
                        QStringLiteral("55.85"), QStringLiteral("74")});
}

TEST(Cuts, ShutterPartsFollowTheFullOpening)
{
    const cuts::Shutter shutter = cuts::shutter(window, shutterBox);
    const std::vector parts{shutter.uCut,        shutter.uVasa,
                            shutter.shalavWidth, cuts::shalavCount(window, shutterBox),
                            shutter.argaz.width, shutter.argaz.height};
    expectSameBits(parts,
                   {100.25 - 14, 100.25 - 17.6, 120.5 - 12.7, (100.25 - 8) / 4.5, 120.5, 18.0});
    expectTexts(parts, {QStringLiteral("86.25"), QStringLiteral("82.65"), QStringLiteral("107.8"),
                        QStringLiteral("20.5"), QStringLiteral("120.5"), QStringLiteral("18")});
    EXPECT_EQ(parts[3], 20.5) << "an exact half, which the store rounds to even";
}

TEST(Cuts, SlatCountIsNegativeBelowItsAllowance)
{
    EXPECT_EQ(cuts::shalavCount({100, 3.5}, shutterBox), -1);
}

TEST(Cuts, DoorFrameStandsOnBothSidesAndAbove)
{
    const cuts::Size door = cuts::doorOpening({90, 210}, 4);
    expectSameBits({door.width, door.height}, {82, 206});
    EXPECT_EQ(runtime::toText(cuts::cutWidth(series(1), cuts::Kanaf, door)),
              QStringLiteral("77.8"));
    EXPECT_EQ(cuts::cutHeight(series(1), cuts::Kanaf, door), 198.5);
    expectSameBits({cuts::cutWidth(series(2), cuts::Kanaf, door)}, {(-4.2 + 82) / 2});
    EXPECT_EQ(runtime::toText(cuts::cutWidth(series(2), cuts::Kanaf, door)),
              QStringLiteral("38.9"));
}

TEST(Cuts, DoorThicknessIsDoubledWhole)
{
    const double thickness = 35 / 100.0 + 4;
    const cuts::Size door = cuts::doorOpening({90.1, 210.2}, thickness);
    expectSameBits({door.width, door.height}, {90.1 - 2 * thickness, 210.2 - thickness});
}

TEST(Cuts, NoDeductionsLeaveTheBase)
{
    const cuts::Series none{.deductions = {{{0.0, 0.0}, {0.0, 0.0}, {0.0, 0.0}, {0.0, 0.0}}},
                            .kanafNum = 3.0};
    expectSameBits(allCuts(none, {100.1, 50.3}),
                   {100.1, 50.3, 100.1 / 3, 50.3, 100.1 / 3, 50.3, 100.1 / 3, 50.3});
}

TEST(Cuts, ADeductionLargerThanTheOpeningIsANegativeCut)
{
    EXPECT_EQ(cuts::cutHeight(series(1), cuts::Glass, {1, 1}), -15);
}

TEST(Cuts, DivisionByZero)
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

TEST(Cuts, ANullFailsOnlyWhereAFormulaMeetsIt)
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

TEST(Cuts, AResultBeyondADoubleOverflows)
{
    constexpr double huge = std::numeric_limits<double>::max();
    cuts::Series wide = series(1);
    wide.deductions[cuts::Kanaf] = {huge, huge};
    EXPECT_EQ(errorOf([&] { cuts::cutWidth(wide, cuts::Kanaf, {huge, 1}); }), runtime::Overflow);
    EXPECT_EQ(errorOf([&] { cuts::cutHeight(wide, cuts::Kanaf, {1, huge}); }), runtime::Overflow);
    EXPECT_EQ(errorOf([] { cuts::doorOpening({1, 1}, huge); }), runtime::Overflow);
}

} // namespace
