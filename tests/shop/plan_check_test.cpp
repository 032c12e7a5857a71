#include "shop/checking/plan_check.h"

#include "shop/csv.h"
#include "shop/documents.h"
#include "shop/pack_check.h"
#include "shop/shop_lines.h"
#include "support/printers.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using shop::ShopPack;

namespace {

ShopPack packOf(const std::vector<shop::OrderLine>& lines,
                const shop::SettingsByGroup& settings = {})
{
    ShopPack pack{shop::piecesOf(lines, settings), {}};
    pack.groups = shop::planGroups(pack.pieces.pieces, settings);
    return pack;
}

QJsonObject jsonOf(const ShopPack& pack)
{
    return QJsonDocument::fromJson(shop::planJson(pack)).object();
}

/// Returns two windows of order 7 with one fault.
std::vector<shop::OrderLine> lines()
{
    shop::OrderLine first = shoptest::window();
    shop::OrderLine second = shoptest::window();
    second.line = 2;
    second.frame.width = 250.4;
    second.frame.height = 180.2;
    second.sash.height.reset();
    return {first, second};
}

/// Sets the value at a path of keys and positions.
void set(QJsonObject& object, const QStringList& path, const QJsonValue& value);

void set(QJsonArray& array, const QStringList& path, const QJsonValue& value)
{
    const int position = path.front().toInt();
    if (path.size() == 1) {
        array[position] = value;
        return;
    }
    QJsonObject inner = array[position].toObject();
    set(inner, path.mid(1), value);
    array[position] = inner;
}

void set(QJsonObject& object, const QStringList& path, const QJsonValue& value)
{
    const QString key = path.front();
    if (path.size() == 1) {
        object[key] = value;
    } else if (object[key].isArray()) {
        QJsonArray inner = object[key].toArray();
        set(inner, path.mid(1), value);
        object[key] = inner;
    } else {
        QJsonObject inner = object[key].toObject();
        set(inner, path.mid(1), value);
        object[key] = inner;
    }
}

QJsonValue get(const QJsonObject& object, const QStringList& path)
{
    QJsonValue value = object;
    for (const QString& each : path)
        value = value.isArray() ? value.toArray()[each.toInt()] : value.toObject()[each];
    return value;
}

struct Planted
{
    const char* name;
    QString finding; ///< A part of the expected finding.
    std::function<void(QJsonObject&)> plant;
};

std::function<void(QJsonObject&)> setting(const QString& path, const QJsonValue& value)
{
    return [=](QJsonObject& plan) { set(plan, path.split(u'.'), value); };
}

std::function<void(QJsonObject&)> adding(const QString& path, double difference)
{
    return [=](QJsonObject& plan) {
        const QStringList keys = path.split(u'.');
        set(plan, keys, get(plan, keys).toDouble() + difference);
    };
}

std::function<void(QJsonObject&)> inList(const QString& path,
                                         const std::function<void(QJsonArray&)>& change)
{
    return [=](QJsonObject& plan) {
        const QStringList keys = path.split(u'.');
        QJsonArray list = get(plan, keys).toArray();
        change(list);
        set(plan, keys, list);
    };
}

/// Returns different kinds of faults. Those of bars and pieces change the plan of the frame.
std::vector<Planted> plantedFaults()
{
    const QString pieces = u"groups.0.bars.0.pieces"_s;
    const auto dropLast = [](QJsonArray& list) { list.removeLast(); };
    const auto doubleFirst = [](QJsonArray& list) { list.append(list.first()); };
    return {
        {"a bar is left out", u"missing"_s, inList(u"groups.0.bars"_s, dropLast)},
        {"a bar is there twice", u"equal but not joined"_s,
         inList(u"groups.0.bars"_s, doubleFirst)},
        {"a group is left out", u"missing"_s, inList(u"groups"_s, dropLast)},
        {"a group occurs twice", u"the group occurs twice"_s, inList(u"groups"_s, doubleFirst)},
        {"a piece too many on a bar", u"bar 1"_s, inList(pieces, doubleFirst)},
        {"a piece is longer than stored", u"bar 1"_s, adding(pieces + u".0.length"_s, 0.01)},
        {"a piece has no length", u"no length greater than 0"_s,
         setting(pieces + u".0.length"_s, 0)},
        {"a piece is of another line", u"missing"_s, setting(pieces + u".0.line"_s, 9)},
        {"a piece is of another order", u"missing"_s, setting(pieces + u".0.order"_s, 8)},
        {"a piece is of the other side", u"missing"_s,
         [=](QJsonObject& plan) {
             const QStringList keys = (pieces + u".0.side"_s).split(u'.');
             const bool isWidth = get(plan, keys).toString() == "width"_L1;
             set(plan, keys, isWidth ? u"height"_s : u"width"_s);
         }},
        {"a piece is of another part", u"belongs to another part"_s,
         setting(pieces + u".0.part"_s, u"mesh"_s)},
        {"the number of equal bars is wrong", u"equal bars"_s,
         setting(u"groups.0.bars.0.count"_s, 1000)},
        {"the rest is wrong", u"the rest is"_s, adding(u"groups.0.bars.0.rest"_s, 0.001)},
        {"the kerf is another", u"rest"_s, adding(u"groups.0.kerf"_s, 0.1)},
        {"the trim is another", u"rest"_s, adding(u"groups.0.trim"_s, 0.1)},
        {"the bar is shorter", u"but the bar has"_s, setting(u"groups.0.barLength"_s, 300)},
        {"the number of stop settings is wrong", u"stops is"_s, adding(u"groups.0.stops"_s, -1)},
        {"the bound is above the bars", u"is greater than the number of bars"_s,
         adding(u"groups.0.bound"_s, 5)},
        {"the bound is below the lengths", u"the lengths need at least"_s,
         setting(u"groups.0.bound"_s, 0)},
        {"proved is wrong", u"proved must be"_s, setting(u"groups.0.proved"_s, false)},
        {"a pane is left out", u"glass: 1 missing"_s, inList(u"glass"_s, dropLast)},
        {"a pane is larger", u"glass: 1 missing"_s, adding(u"glass.0.width"_s, 0.01)},
        {"panes are more", u"glass: 1 missing"_s, adding(u"glass.0.count"_s, 1)},
        {"a fault is left out", u"errors: 1 missing"_s, inList(u"errors"_s, dropLast)},
        {"a fault is of no line", u"no valid order or line"_s, setting(u"errors.0.line"_s, 1.5)},
        {"a fault is of an unknown part", u"unknown part 'door'"_s,
         setting(u"errors.0.part"_s, u"door"_s)},
        {"a fault is of an unknown side", u"unknown side 'top'"_s,
         setting(u"errors.0.side"_s, u"top"_s)},
        {"a fault has no reason", u"no reason"_s, setting(u"errors.0.reason"_s, QString())},
        {"a key is missing", u"'stops' is missing"_s,
         [](QJsonObject& plan) {
             QJsonObject group = get(plan, {u"groups"_s, u"0"_s}).toObject();
             group.remove(u"stops"_s);
             set(plan, {u"groups"_s, u"0"_s}, group);
         }},
        {"a key is unknown", u"'colors' is unknown"_s, setting(u"groups.0.colors"_s, 1)},
    };
}

QStringList allFindings(const QJsonObject& plan, const shop::Pieces& wanted)
{
    return shop::checking::checkPlan(plan) + shop::checking::checkAgainst(plan, wanted, {});
}

/// Returns the contents of all documents that the checker reads.
QMap<QString, QByteArray> csvFilesOf(const ShopPack& pack)
{
    return {{u"cut-list.csv"_s, shop::cutListCsv(pack)},
            {u"bar-plan.csv"_s, shop::barPlanCsv(pack)},
            {u"glass.csv"_s, shop::glassCsv(pack)},
            {u"mesh.csv"_s, shop::meshCsv(pack)}};
}

} // namespace

TEST(PlanCheckTest, SoundPlan_HasNoFinding)
{
    const ShopPack pack = packOf(lines());
    EXPECT_EQ(allFindings(jsonOf(pack), pack.pieces), QStringList());
    EXPECT_EQ(pack.pieces.faults.size(), 1U);
}

TEST(PlanCheckTest, EachPlantedFault_IsFound)
{
    const ShopPack pack = packOf(lines());
    ASSERT_GE(plantedFaults().size(), 20U);
    for (const Planted& each : plantedFaults()) {
        QJsonObject plan = jsonOf(pack);
        each.plant(plan);
        ASSERT_NE(plan, jsonOf(pack)) << each.name;
        const QStringList findings = allFindings(plan, pack.pieces);
        EXPECT_FALSE(findings.filter(each.finding).isEmpty())
            << each.name << ": " << qPrintable(findings.join(u'\n'));
    }
}

TEST(PlanCheckTest, SettingsUnlikeTheStores_AreFound)
{
    const ShopPack pack = packOf(lines());
    shop::SettingsByGroup settings;
    shop::BarSettings frame = shop::defaultSettings(shop::Part::Frame);
    frame.kerf = 0.4;
    settings[{shop::Part::Frame, u"משקוף"_s, u"לבן"_s}] = frame;
    const QStringList findings = shop::checking::checkAgainst(jsonOf(pack), pack.pieces, settings);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_TRUE(findings.front().contains(u"differs from the settings"_s));
}

TEST(PlanCheckTest, FileWithoutPlan_IsAFinding)
{
    EXPECT_EQ(shop::checking::checkPlanFile("").size(), 1);
    EXPECT_EQ(shop::checking::checkPlanFile("[]").size(), 1);
    EXPECT_EQ(shop::checking::checkPlanFile("{}").size(), 3);
    EXPECT_EQ(shop::checking::checkPlanFile(R"({"groups":[],"glass":[],"errors":[]})").size(), 0);
    EXPECT_EQ(shop::checking::checkPlanFile(R"({"groups":1,"glass":[],"errors":[]})").size(), 1);
}

TEST(PlanCheckTest, DocumentWithOtherTotals_IsFound)
{
    const ShopPack pack = packOf(lines());
    const QJsonObject plan = jsonOf(pack);
    const QMap<QString, QByteArray> files = csvFilesOf(pack);
    EXPECT_EQ(shop::checking::checkDocuments(files, plan, pack.pieces), QStringList());
    for (const QString& file :
         {u"cut-list.csv"_s, u"bar-plan.csv"_s, u"glass.csv"_s, u"mesh.csv"_s}) {
        QMap<QString, QByteArray> wrong = files;
        QList<QByteArray> rows = wrong[file].split('\n');
        ASSERT_GT(rows.size(), 2);
        rows.removeAt(1);
        wrong[file] = rows.join('\n');
        const QStringList findings = shop::checking::checkDocuments(wrong, plan, pack.pieces);
        ASSERT_EQ(findings.size(), 1) << qPrintable(file);
        EXPECT_TRUE(findings.front().startsWith(file));
    }
}

TEST(PlanCheckTest, ManyRandomPlans_AreSound)
{
#ifdef ZOMREL_ADDRESS_SANITIZER
    constexpr int plans = 1000; // The sanitizers make planning slow.
#else
    constexpr int plans = 10000;
#endif
    std::mt19937 dice(20260301);
    const auto below = [&](unsigned end) { return dice() % end; };
    for (int i = 0; i < plans; ++i) {
        shop::SettingsByGroup settings;
        shop::BarSettings bars;
        bars.barLength = 200 + below(500);
        bars.kerf = below(8) / 10.0;
        bars.trim = below(30) / 10.0;
        settings[{shop::Part::Frame, u"משקוף"_s, u"לבן"_s}] = bars;
        std::vector<shop::OrderLine> orders;
        const unsigned count = 1 + below(5);
        for (unsigned line = 1; line <= count; ++line) {
            shop::OrderLine window;
            window.order = 7;
            window.line = static_cast<int>(line);
            // Thirds and hundredths; some are too long for their bar, some are 0.
            window.frame = {below(30000) / 100.0, below(600) / 3.0, static_cast<int>(below(4)),
                            u"משקוף"_s, u"לבן"_s};
            window.sash.kind = window.mesh.kind = window.glass.kind = u"ללא"_s;
            orders.push_back(window);
        }
        const ShopPack pack = packOf(orders, settings);
        const QJsonObject plan = jsonOf(pack);
        const QStringList findings = shop::checking::checkPlan(plan) +
                                     shop::checking::checkAgainst(plan, pack.pieces, settings);
        ASSERT_EQ(findings, QStringList()) << i;
    }
}

TEST(PlanCheckTest, TwoThousandRandomLines_HaveEqualFiguresInAllDocuments)
{
    std::mt19937 dice(20260302);
    const auto measure = [&](unsigned from, unsigned to) {
        return (from + dice() % (to - from)) / 100.0;
    };
    for (int order = 1; order <= 100; ++order) {
        std::vector<shop::OrderLine> orderLines;
        int framePieces = 0;
        for (int i = 1; i <= 20; ++i) {
            const bool isDoor = dice() % 4 == 0;
            shop::OrderLine line = isDoor ? shoptest::door() : shoptest::window();
            line.order = order;
            line.line = i;
            line.frame.width = measure(4000, 30000);
            line.frame.height = measure(4000, 30000);
            line.frame.count = static_cast<int>(1 + dice() % 4);
            line.sash.width = measure(2000, 15000);
            if (!isDoor)
                line.glass.width = measure(2000, 15000);
            orderLines.push_back(line);
            const int count = *line.frame.count;
            framePieces += isDoor ? (count + 1) / 2 + count : 2 * count;
        }
        const ShopPack pack = packOf(orderLines);
        EXPECT_EQ(
            std::count_if(pack.pieces.pieces.begin(), pack.pieces.pieces.end(),
                          [](const auto& each) { return each.group.part == shop::Part::Frame; }),
            framePieces);
        const QJsonObject plan = jsonOf(pack);
        ASSERT_EQ(allFindings(plan, pack.pieces) +
                      shop::checking::checkDocuments(csvFilesOf(pack), plan, pack.pieces),
                  QStringList())
            << order;
    }
}

TEST(PlanCheckTest, BoundLoweredByOne_IsFoundFromPiecesThatShareNoBar)
{
    // Frames of 310 and 320 are longer than half a bar of 598: four of each line need eight bars.
    std::vector<shop::OrderLine> large(2, shoptest::window());
    for (int i = 0; i < 2; ++i) {
        large[static_cast<std::size_t>(i)].line = i + 1;
        large[static_cast<std::size_t>(i)].frame.width = 310;
        large[static_cast<std::size_t>(i)].frame.height = 320;
    }
    QJsonObject plan = jsonOf(packOf(large));
    ASSERT_EQ(get(plan, {u"groups"_s, u"0"_s, u"bound"_s}).toInt(), 8);
    set(plan, {u"groups"_s, u"0"_s, u"bound"_s}, 7);
    set(plan, {u"groups"_s, u"0"_s, u"proved"_s}, false);
    const QStringList findings = shop::checking::checkPlan(plan);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_TRUE(
        findings.front().endsWith(u"the bound is 7, but the lengths need at least 8 bars"_s));
}

TEST(PlanCheckTest, OrdersOfAnyStoredNumber_AreAccepted)
{
    for (const int order : {0, -5, std::numeric_limits<int>::min()}) {
        shop::OrderLine line = shoptest::window();
        line.order = order;
        const ShopPack pack = packOf({line});
        EXPECT_EQ(allFindings(jsonOf(pack), pack.pieces), QStringList());
    }
}

TEST(PlanCheckTest, EachChangedCellOfADocument_IsFound)
{
    const ShopPack pack = packOf(lines());
    const QJsonObject plan = jsonOf(pack);
    const QMap<QString, QByteArray> files = csvFilesOf(pack);
    for (const QString& file : files.keys()) {
        const QList<QStringList> rows = shop::readCsv(files[file]).value();
        for (qsizetype row = 0; row < rows.size(); ++row) {
            for (qsizetype column = 0; column < rows[row].size(); ++column) {
                QList<QStringList> changed = rows;
                changed[row][column].append(u'1');
                QMap<QString, QByteArray> wrong = files;
                wrong[file] = shop::csvText(changed);
                EXPECT_EQ(shop::checking::checkDocuments(wrong, plan, pack.pieces).size(), 1)
                    << qPrintable(file) << " row " << row << " column " << column;
            }
        }
    }
}

TEST(PlanCheckTest, DocumentWithARowTooMany_IsFound)
{
    const ShopPack pack = packOf(lines());
    const QMap<QString, QByteArray> files = csvFilesOf(pack);
    for (const QString& file : files.keys()) {
        QMap<QString, QByteArray> wrong = files;
        wrong[file] += wrong[file].split('\n').at(1) + '\n';
        EXPECT_EQ(shop::checking::checkDocuments(wrong, jsonOf(pack), pack.pieces).size(), 1)
            << qPrintable(file);
    }
}

TEST(PlanCheckTest, SmallAreas_AreComparedAsExactlyAsLargeOnes)
{
    shop::OrderLine line = shoptest::window();
    line.glass = {0.1, 0.2, 1, u"רבודה"_s, u"שקוף"_s};
    const ShopPack pack = packOf({line});
    QMap<QString, QByteArray> files = csvFilesOf(pack);
    ASSERT_TRUE(files[u"glass.csv"_s].contains(",0.000002,"));
    files[u"glass.csv"_s].replace(",0.000002,", ",0.0000025,");
    EXPECT_EQ(shop::checking::checkDocuments(files, jsonOf(pack), pack.pieces),
              QStringList{u"glass.csv: row 2: the area '0.0000025' is wrong"_s});
}

TEST(PlanCheckTest, PackOfAWorkbook_HasTablesThatEqualThePlan)
{
    const ShopPack pack = packOf(lines());
    EXPECT_EQ(shop::findingsIn(pack, {}, {{u"workbook.xlsx"_s, QByteArray()}}), QStringList());
}
