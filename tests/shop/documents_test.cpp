#include "shop/documents.h"

#include "shop/csv.h"
#include "shop/cut_list.h"
#include "shop/shop_lines.h"
#include "support/printers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <numeric>

using namespace Qt::StringLiterals;
using shop::ShopPack;

namespace {

/// Returns a line that has only a frame.
shop::OrderLine frameOnly(int line, double width, double height)
{
    shop::OrderLine result;
    result.order = 7;
    result.line = line;
    result.frame = {width, height, 2, u"=משקוף"_s, u"לבן"_s};
    result.sash.kind = result.mesh.kind = result.glass.kind = u"ללא"_s;
    return result;
}

ShopPack packOf(const std::vector<shop::OrderLine>& lines)
{
    ShopPack pack{shop::piecesOf(lines, {}), {}};
    pack.groups = shop::planGroups(pack.pieces.pieces, {});
    return pack;
}

QList<QStringList> rowsOf(const QByteArray& csv)
{
    return shop::readCsv(csv).value_or(QList<QStringList>());
}

} // namespace

TEST(DocumentsTest, CutList_PutsEqualLengthsTogetherLongestFirst)
{
    const QList<QStringList> rows =
        rowsOf(shop::cutListCsv(packOf({frameOnly(1, 120, 100.25), frameOnly(2, 100, 120)})));
    const QList<QStringList> expected{
        {u"part"_s, u"profile"_s, u"colour"_s, u"length"_s, u"count"_s, u"total"_s, u"lines"_s,
         u"close"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"120"_s, u"4"_s, u"480"_s, u"7-1 7-2"_s, u"0"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"100.25"_s, u"2"_s, u"200.5"_s, u"7-1"_s, u"1"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"100"_s, u"2"_s, u"200"_s, u"7-2"_s, u"1"_s},
    };
    EXPECT_EQ(rows, expected);
}

TEST(DocumentsTest, LengthsThatDifferByExactlyThreeTenths_AreNotClose)
{
    // 58.45 - 58.15 is 0.30000000000000426 and 100.3 - 100 is 0.29999999999999716.
    for (const auto& [one, other, isClose] :
         std::vector<std::tuple<double, double, bool>>{{58.45, 58.15, false},
                                                       {100.3, 100, false},
                                                       {100.299, 100, true},
                                                       {100.31, 100, false}}) {
        const std::vector<shop::CutListRow> rows =
            shop::cutList(packOf({frameOnly(1, one, other)}).groups);
        ASSERT_EQ(rows.size(), 2U);
        EXPECT_EQ(rows[0].isClose, isClose) << one;
        EXPECT_EQ(rows[1].isClose, isClose) << one;
    }
}

TEST(DocumentsTest, BarPlan_HasARowForEachPieceWithItsPlace)
{
    // 2 x 290 + 0.5 is 580.5 of 598; 598 - 581 leaves 17. 2 x 200 leaves 598 - 401 = 197.
    const QList<QStringList> rows = rowsOf(shop::barPlanCsv(packOf({frameOnly(3, 290, 200)})));
    const QList<QStringList> expected{
        {u"part"_s, u"profile"_s, u"colour"_s, u"bar"_s, u"count"_s, u"position"_s, u"order"_s,
         u"line"_s, u"side"_s, u"length"_s, u"rest"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"1"_s, u"1"_s, u"1"_s, u"7"_s, u"3"_s, u"width"_s,
         u"290"_s, u"17"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"1"_s, u"1"_s, u"2"_s, u"7"_s, u"3"_s, u"width"_s,
         u"290"_s, u"17"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"2"_s, u"1"_s, u"1"_s, u"7"_s, u"3"_s, u"height"_s,
         u"200"_s, u"197"_s},
        {u"frame"_s, u"'=משקוף"_s, u"לבן"_s, u"2"_s, u"1"_s, u"2"_s, u"7"_s, u"3"_s, u"height"_s,
         u"200"_s, u"197"_s},
    };
    EXPECT_EQ(rows, expected);
}

TEST(DocumentsTest, GlassAndMesh_PutEqualSizesTogetherAndRoundNothing)
{
    shop::OrderLine first = shoptest::window();
    shop::OrderLine second = shoptest::window();
    second.line = 2;
    second.glass.count = 3;
    second.mesh.width = 58.9;
    const ShopPack pack = packOf({first, second});
    const QStringList heading{u"width"_s,  u"height"_s, u"count"_s, u"kind"_s,
                              u"colour"_s, u"area"_s,   u"lines"_s};
    // 50.2 x 80.3 x 5 / 10000 = 2.01553; 58.9 x 93.1 x 2 / 10000 = 1.096718
    const QList<QStringList> glass = rowsOf(shop::glassCsv(pack));
    ASSERT_EQ(glass.size(), 2);
    EXPECT_EQ(glass[0], heading);
    EXPECT_EQ(glass[1].mid(0, 5),
              (QStringList{u"50.2"_s, u"80.3"_s, u"5"_s, u"רבודה"_s, u"שקוף"_s}));
    EXPECT_NEAR(glass[1][5].toDouble(), 2.01553, 1e-12);
    EXPECT_EQ(glass[1][6], u"7-1 7-2"_s);
    const QList<QStringList> mesh = rowsOf(shop::meshCsv(pack));
    ASSERT_EQ(mesh.size(), 3);
    EXPECT_EQ(mesh[1][0], u"58.9"_s);
    EXPECT_NEAR(mesh[1][5].toDouble(), 1.096718, 1e-12);
    EXPECT_EQ(mesh[2][0], u"58.8"_s);
}

TEST(DocumentsTest, SizesThatDifferByNoise_AreOneRow)
{
    // 58.15 as it is stored after two different computations.
    const double greater = 58.150000000000006;
    const std::vector<shop::CutListRow> cuts =
        shop::cutList(packOf({frameOnly(1, 58.15, greater), frameOnly(2, greater, 100)}).groups);
    ASSERT_EQ(cuts.size(), 2U);
    EXPECT_EQ(cuts[1].length, greater);
    EXPECT_EQ(cuts[1].count, 6);
    EXPECT_EQ(cuts[1].lines, (QStringList{u"7-1"_s, u"7-2"_s}));
    std::vector<shop::OrderLine> lines(3, shoptest::window());
    lines[0].glass.width = greater;
    lines[1].glass.width = greater;
    lines[1].glass.height = 70;
    lines[2].glass.width = 58.15;
    const std::vector<shop::PaneRow> panes = shop::paneList(shop::piecesOf(lines, {}).glass);
    ASSERT_EQ(panes.size(), 2U);
    EXPECT_EQ(panes[0].height, 80.3);
    EXPECT_EQ(panes[0].count, 4);
    EXPECT_EQ(panes[1].height, 70);
    EXPECT_EQ(panes[1].count, 2);
}

TEST(DocumentsTest, PlanJson_HasTheStatedKeys)
{
    shop::OrderLine line = shoptest::window();
    line.sash.width.reset();
    const QJsonObject plan = QJsonDocument::fromJson(shop::planJson(packOf({line}))).object();
    EXPECT_EQ(plan.keys(), (QStringList{u"errors"_s, u"glass"_s, u"groups"_s}));
    const QJsonObject frame = plan["groups"_L1][0].toObject();
    EXPECT_EQ(frame.keys(),
              (QStringList{u"barLength"_s, u"bars"_s, u"bound"_s, u"colour"_s, u"kerf"_s, u"part"_s,
                           u"profile"_s, u"proved"_s, u"stops"_s, u"trim"_s}));
    EXPECT_EQ(frame["part"_L1].toString(), u"frame"_s);
    EXPECT_EQ(frame["barLength"_L1].toDouble(), 600);
    // 2 x 119.4 + 2 x 99.4 + 3 x 0.5 is 439.1: one bar; 598 - 439.6 leaves 158.4.
    EXPECT_EQ(frame["bound"_L1].toInt(), 1);
    EXPECT_TRUE(frame["proved"_L1].toBool());
    EXPECT_EQ(frame["stops"_L1].toInt(), 2);
    ASSERT_EQ(frame["bars"_L1].toArray().size(), 1);
    EXPECT_NEAR(frame["bars"_L1][0]["rest"_L1].toDouble(), 158.4, 1e-9);
    EXPECT_EQ(frame["bars"_L1][0]["pieces"_L1].toArray().size(), 4);
    const QJsonObject error = plan["errors"_L1][0].toObject();
    EXPECT_EQ(error["part"_L1].toString(), u"sash"_s);
    EXPECT_EQ(error["side"_L1].toString(), u"width"_s);
    EXPECT_EQ(error["reason"_L1].toString(), u"Kanaf_W is Null"_s);
    EXPECT_EQ(plan["glass"_L1][0]["count"_L1].toInt(), 2);
}

TEST(DocumentsTest, Groups_AreOrderedByPartProfileAndColour)
{
    shop::OrderLine first = shoptest::window();
    shop::OrderLine second = shoptest::window();
    first.frame.colour = u"שחור"_s;
    second.frame.colour = QString();
    QStringList colours;
    for (const shop::GroupPlan& each : packOf({first, second}).groups) {
        if (each.group.part == shop::Part::Frame)
            colours.append(each.group.colour);
    }
    EXPECT_EQ(colours, (QStringList{QString(), u"שחור"_s}));
}

TEST(DocumentsTest, PiecesCsv_HasARowForEachPieceWithItsAngle)
{
    shop::SettingsByGroup settings;
    shop::BarSettings bars;
    bars.angle = 45;
    settings[{shop::Part::Frame, u"=משקוף"_s, u"לבן"_s}] = bars;
    const shop::Pieces pieces = shop::piecesOf({frameOnly(1, 120, 100)}, settings);
    const QList<QStringList> rows = rowsOf(shop::piecesCsv(pieces.pieces, settings));
    ASSERT_EQ(rows.size(), 5);
    EXPECT_EQ(rows[0], (QStringList{u"order"_s, u"line"_s, u"part"_s, u"side"_s, u"profile"_s,
                                    u"colour"_s, u"length"_s, u"angle"_s}));
    EXPECT_EQ(rows[1], (QStringList{u"7"_s, u"1"_s, u"frame"_s, u"width"_s, u"'=משקוף"_s, u"לבן"_s,
                                    u"120"_s, u"45"_s}));
    EXPECT_EQ(rows[4][3], u"height"_s);
}

TEST(DocumentsTest, SumsOfPanes_ExceedAnInt)
{
    shop::OrderLine line = shoptest::window();
    line.glass.count = shop::mostPieces;
    const shop::Pieces one = shop::piecesOf({line}, {});
    const std::vector<shop::Pane> panes(30000, one.glass.front());
    EXPECT_EQ(shop::paneList(panes).front().count, 3'000'000'000);
    ShopPack pack;
    pack.pieces.glass = panes;
    EXPECT_EQ(rowsOf(shop::glassCsv(pack))[1][2], u"3000000000"_s);
}

// 3 x 119.4 is 358.20000000000005 in floating-point numbers.
TEST(DocumentsTest, ComputedTotals_HaveNoNoise)
{
    shop::OrderLine line = frameOnly(1, 119.4, 100);
    line.frame.count = 3;
    const QList<QStringList> rows = rowsOf(shop::cutListCsv(packOf({line})));
    EXPECT_EQ(rows[1][3], u"119.4"_s);
    EXPECT_EQ(rows[1][5], u"358.2"_s);
    EXPECT_EQ(shop::computedNumber(3 * 119.4), u"358.2"_s);
    // 50.2 x 80.3 x 2 / 10000
    EXPECT_EQ(rowsOf(shop::glassCsv(packOf({shoptest::window()})))[1][5], u"0.806212"_s);
}
