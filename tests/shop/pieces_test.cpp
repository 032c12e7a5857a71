#include "shop/pieces.h"

#include "shop/shop_lines.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <tuple>

using namespace Qt::StringLiterals;
using shop::Fault;
using shop::Part;
using shop::Side;
using shoptest::door;
using shoptest::window;

namespace {

using Kind = std::tuple<Part, Side, double>;
using Counts = std::map<Kind, int>;

Counts countsOf(const shop::Pieces& pieces)
{
    Counts counts;
    for (const shop::Piece& each : pieces.pieces)
        ++counts[{each.group.part, each.side, each.length}];
    return counts;
}

shop::Pieces piecesOf(const shop::OrderLine& line, const shop::SettingsByGroup& settings = {})
{
    return shop::piecesOf({line}, settings);
}

QStringList faultsOf(const shop::Pieces& pieces)
{
    QStringList texts;
    for (const Fault& each : pieces.faults)
        texts.append(shop::faultText(each));
    return texts;
}

int countOf(const shop::Pieces& pieces, Part part)
{
    return static_cast<int>(
        std::count_if(pieces.pieces.begin(), pieces.pieces.end(),
                      [&](const shop::Piece& each) { return each.group.part == part; }));
}

} // namespace

TEST(PiecesTest, Window_GivesFrameSashAndTwiceItsMesh)
{
    const shop::Pieces pieces = piecesOf(window());
    const Counts expected{
        {{Part::Frame, Side::Width, 119.4}, 2}, {{Part::Frame, Side::Height, 99.4}, 2},
        {{Part::Sash, Side::Width, 58.6}, 4},   {{Part::Sash, Side::Height, 93.5}, 4},
        {{Part::Mesh, Side::Width, 58.8}, 4},   {{Part::Mesh, Side::Height, 93.1}, 4},
    };
    EXPECT_EQ(countsOf(pieces), expected);
    EXPECT_TRUE(pieces.faults.empty());
    EXPECT_EQ(pieces.pieces.front().order, 7);
    EXPECT_EQ(pieces.pieces.front().line, 1);
    EXPECT_EQ(pieces.pieces.front().group, (shop::GroupKey{Part::Frame, u"משקוף"_s, u"לבן"_s}));
}

TEST(PiecesTest, Window_GivesPanesOfGlassAndPanelsOfMesh)
{
    const shop::Pieces pieces = piecesOf(window());
    ASSERT_EQ(pieces.glass.size(), 1U);
    EXPECT_EQ(pieces.glass[0].width, 50.2);
    EXPECT_EQ(pieces.glass[0].height, 80.3);
    EXPECT_EQ(pieces.glass[0].count, 2);
    EXPECT_EQ(pieces.glass[0].kind, u"רבודה"_s);
    EXPECT_EQ(pieces.glass[0].colour, u"שקוף"_s);
    ASSERT_EQ(pieces.mesh.size(), 1U);
    EXPECT_EQ(pieces.mesh[0].count, 2);
}

TEST(PiecesTest, Door_HasOneWidthAndTwoHeightsOfFrameAndNoMeshOrGlass)
{
    const shop::Pieces pieces = piecesOf(door());
    const Counts expected{
        {{Part::Frame, Side::Width, 119.4}, 1},
        {{Part::Frame, Side::Height, 99.4}, 2},
        {{Part::Sash, Side::Width, 58.6}, 2},
        {{Part::Sash, Side::Height, 93.5}, 2},
    };
    EXPECT_EQ(countsOf(pieces), expected);
    EXPECT_TRUE(pieces.glass.empty());
    EXPECT_TRUE(pieces.mesh.empty());
    EXPECT_TRUE(pieces.faults.empty());
}

TEST(PiecesTest, LineWithOneNullAmongItsFourZeros_IsAWindow)
{
    shop::OrderLine line = door();
    line.mesh.height.reset();
    EXPECT_FALSE(shop::isDoor(line));
    line.mesh.height = -0.0;
    EXPECT_TRUE(shop::isDoor(line));
    line.mesh.height = 1e-12;
    EXPECT_FALSE(shop::isDoor(line));
}

TEST(PiecesTest, Monoblock_GivesGuidesSlatsAndABox)
{
    shop::OrderLine line = window();
    line.uCut = 97.0;
    line.uVasa = 118.5;
    line.slatWidth = 107.3;
    line.slatCount = 21;
    line.boxWidth = 119.0;
    const shop::Pieces pieces = piecesOf(line);
    Counts counts = countsOf(pieces);
    EXPECT_EQ((counts[{Part::Guide, Side::Height, 97.0}]), 2);
    EXPECT_EQ((counts[{Part::Guide, Side::Height, 118.5}]), 2);
    EXPECT_EQ((counts[{Part::Slat, Side::Width, 107.3}]), 21);
    EXPECT_EQ((counts[{Part::Box, Side::Width, 119.0}]), 1);
    EXPECT_EQ(pieces.pieces.size(), 20U + 4U + 21U + 1U);
    EXPECT_EQ(pieces.pieces.back().group, (shop::GroupKey{Part::Box, u"ארגז"_s, u""_s}));
}

TEST(PiecesTest, Monoblock_IsALineWithOneShutterSizeThatIsNotZero)
{
    shop::OrderLine line = window();
    EXPECT_FALSE(shop::isMonoblock(line));
    line.uCut.reset();
    line.boxWidth.reset();
    EXPECT_FALSE(shop::isMonoblock(line));
    EXPECT_TRUE(piecesOf(line).faults.empty());
    line.uVasa = 118.5;
    EXPECT_TRUE(shop::isMonoblock(line));
    EXPECT_EQ(faultsOf(piecesOf(line)),
              (QStringList{u"order 7, line 1, guide, height: U_Cut is Null"_s,
                           u"order 7, line 1, box, width: Argaz_Width is Null"_s}));
}

TEST(PiecesTest, KindThatBeginsWithTheWordWithout_IsNotMade)
{
    const std::vector<std::pair<QString, bool>> kinds{
        {u"ללא"_s, true},
        {u"ללא רשת"_s, true},
        {u" ללא כנף"_s, true},
        {u"ללא-רשת"_s, true},
        {u"ללא־רשת"_s, true},
        {u"ללא."_s, true},
        {u"לְלֹא רשת"_s, true},
        {u"\u200Fללא רשת"_s, true},
        {u"ללא\u200F רשת"_s, true},
        {u"\"ללא\" רשת"_s, false},
        {u""_s, false},
        {u"ללאה"_s, false},
        {u"ללא2"_s, false},
        {u"ללא_רשת"_s, false},
        {u"ללא\"ר"_s, false},
        {u"רשת ללא"_s, false},
        {u"לל"_s, false},
        {u"בללא"_s, false},
    };
    for (const auto& [kind, isNotMade] : kinds)
        EXPECT_EQ(shop::isNotMade(kind), isNotMade) << qPrintable(kind);
}

TEST(PiecesTest, PartThatIsNotMade_HasNoPieceAndNoFault)
{
    shop::OrderLine line = window();
    for (shop::PartOfLine* part : {&line.sash, &line.mesh, &line.glass}) {
        part->kind = u"ללא"_s;
        part->width.reset(); // A fault if the part were made.
    }
    const shop::Pieces pieces = piecesOf(line);
    EXPECT_EQ(pieces.pieces.size(), 4U);
    EXPECT_TRUE(pieces.glass.empty());
    EXPECT_TRUE(pieces.mesh.empty());
    EXPECT_TRUE(pieces.faults.empty());
}

TEST(PiecesTest, EmptyKind_IsAGroupOfItsOwn)
{
    shop::OrderLine line = window();
    line.frame.kind = QString();
    const shop::Pieces pieces = piecesOf(line);
    EXPECT_EQ(pieces.pieces.front().group, (shop::GroupKey{Part::Frame, u""_s, u"לבן"_s}));
}

TEST(PiecesTest, FractionalNumberOfPieces_IsRoundedUpAfterTheFactor)
{
    struct Case
    {
        int count;
        double factor;
        int pieces;
    };
    // 3 x 1.1 is 3.3000000000000003; 10 x 1.1 is 11, 30 x 0.1 is 3 but for floating-point noise
    for (const Case& each : std::vector<Case>{{3, 0.5, 2},
                                              {2, 0.5, 1},
                                              {1, 0.5, 1},
                                              {3, 1.1, 4},
                                              {10, 1.1, 11},
                                              {30, 0.1, 3},
                                              {1, 0.0001, 1},
                                              {5, 0, 0}}) {
        shop::SettingsByGroup settings;
        shop::BarSettings frame;
        frame.window = {each.factor, 0};
        settings[{Part::Frame, u"משקוף"_s, u"לבן"_s}] = frame;
        shop::OrderLine line = window();
        line.frame.count = each.count;
        const shop::Pieces pieces = piecesOf(line, settings);
        EXPECT_EQ(countOf(pieces, Part::Frame), each.pieces) << each.count << " x " << each.factor;
    }
}

TEST(PiecesTest, NullLength_DropsItsOwnPiecesOnly)
{
    shop::OrderLine line = window();
    line.frame.width.reset();
    const shop::Pieces pieces = piecesOf(line);
    EXPECT_EQ(pieces.pieces.size(), 18U);
    EXPECT_EQ(faultsOf(pieces), QStringList{u"order 7, line 1, frame, width: Mashkof_W is Null"_s});
}

TEST(PiecesTest, NullCount_DropsBothDirections)
{
    shop::OrderLine line = window();
    line.sash.count.reset();
    const shop::Pieces pieces = piecesOf(line);
    EXPECT_EQ(pieces.pieces.size(), 12U);
    EXPECT_EQ(faultsOf(pieces),
              (QStringList{u"order 7, line 1, sash, width: Kanaf_Count is Null"_s,
                           u"order 7, line 1, sash, height: Kanaf_Count is Null"_s}));
}

TEST(PiecesTest, NullSizeOfAPane_DropsThePaneAndIsAFault)
{
    shop::OrderLine line = window();
    line.glass.height.reset();
    line.mesh.width.reset();
    const shop::Pieces pieces = piecesOf(line);
    EXPECT_TRUE(pieces.glass.empty());
    EXPECT_TRUE(pieces.mesh.empty());
    EXPECT_EQ(countOf(pieces, Part::Mesh), 4);
    EXPECT_EQ(faultsOf(pieces),
              (QStringList{u"order 7, line 1, mesh, width: Reshet_W is Null"_s,
                           u"order 7, line 1, glass, height: Glass_H is Null"_s}));
}

TEST(PiecesTest, LengthThatCannotBeCut_IsAFaultAndNoPiece)
{
    struct Case
    {
        double length;
        QString reason;
    };
    // A bar of 600 with trims of 1 holds 598.
    for (const Case& each :
         std::vector<Case>{{0, u"Mashkof_W is 0; a length must be greater than 0"_s},
                           {-3.5, u"Mashkof_W is -3.5; a length must be greater than 0"_s},
                           {598.01, u"Mashkof_W is 598.01; the longest piece of a bar is 598"_s},
                           {598, {}},
                           {598 + 1e-10, {}}}) {
        shop::OrderLine line = window();
        line.frame.width = each.length;
        const shop::Pieces pieces = piecesOf(line);
        EXPECT_EQ(pieces.pieces.size(), each.reason.isEmpty() ? 20U : 18U);
        EXPECT_EQ(faultsOf(pieces),
                  each.reason.isEmpty()
                      ? QStringList()
                      : QStringList{u"order 7, line 1, frame, width: "_s + each.reason});
    }
}

TEST(PiecesTest, CountOfZero_IsNoFault)
{
    shop::OrderLine line = window();
    line.sash.count = 0;
    line.sash.width.reset();
    EXPECT_TRUE(piecesOf(line).faults.empty());
    EXPECT_EQ(countOf(piecesOf(line), Part::Sash), 0);
}

TEST(PiecesTest, NegativeAndExcessiveCounts_AreFaults)
{
    shop::OrderLine line = window();
    line.frame.count = -2;
    line.sash.count = std::numeric_limits<int>::max();
    EXPECT_EQ(
        faultsOf(piecesOf(line)),
        (QStringList{
            u"order 7, line 1, frame, width: Mahkof_Count is -2; a count must not be negative"_s,
            u"order 7, line 1, frame, height: Mahkof_Count is -2; a count must not be negative"_s,
            u"order 7, line 1, sash, width: Kanaf_Count results in 2147483647 pieces, more than 100000"_s,
            u"order 7, line 1, sash, height: Kanaf_Count results in 2147483647 pieces, more than 100000"_s}));
}

TEST(PiecesTest, NumberText_HasAllDigitsAndNoExponent)
{
    EXPECT_EQ(shop::numberText(600), u"600"_s);
    EXPECT_EQ(shop::numberText(58.150000000000006), u"58.150000000000006"_s);
    EXPECT_EQ(shop::numberText(1.0 / 3), u"0.3333333333333333"_s);
    EXPECT_EQ(shop::numberText(1000000), u"1000000"_s);
    EXPECT_EQ(shop::numberText(1e-7), u"0.0000001"_s);
}

TEST(PiecesTest, LengthsBelowTheNoise_AreNotAboveZero)
{
    shop::OrderLine line = shoptest::window();
    line.frame.width = 1e-10;
    line.glass.height = 0.9e-9;
    line.mesh.width = 1e-9;
    const shop::Pieces pieces = shop::piecesOf({line}, {});
    ASSERT_EQ(pieces.faults.size(), 2U);
    EXPECT_EQ(pieces.faults[0].reason, shop::Fault::Reason::NotAboveZero);
    EXPECT_EQ(pieces.faults[0].field, u"Mashkof_W"_s);
    EXPECT_EQ(pieces.faults[1].field, u"Glass_H"_s);
    EXPECT_TRUE(pieces.glass.empty());
    EXPECT_EQ(pieces.mesh.size(), 1U);
}

TEST(PiecesTest, TooManyPanes_AreFaultsAndNoPanes)
{
    shop::OrderLine line = shoptest::window();
    line.glass.count = shop::mostPieces + 1;
    line.mesh.count = std::numeric_limits<int>::max();
    const shop::Pieces pieces = shop::piecesOf({line}, {});
    ASSERT_EQ(pieces.faults.size(), 4U);
    for (const shop::Fault& each : pieces.faults)
        EXPECT_EQ(each.reason, shop::Fault::Reason::TooMany);
    EXPECT_EQ(shop::reasonText(pieces.faults[3]),
              u"Glass_Count results in 100001 pieces, more than 100000"_s);
    EXPECT_TRUE(pieces.glass.empty());
    EXPECT_TRUE(pieces.mesh.empty());
    line.glass.count = shop::mostPieces;
    EXPECT_EQ(shop::piecesOf({line}, {}).glass.front().count, 100000);
}
