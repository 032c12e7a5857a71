#include "shop/order_source.h"

#include "platform/runtime/run_time_error.h"
#include "shop/bar_table.h"
#include "support/printers.h"
#include "support/temporary_store.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

TEST(OrderSourceTest, Lines_AreInTheOrderOfTheirNumbersWithStoredValues)
{
    TemporaryStore store;
    store.addOrder(7);
    store.addLine(7, 2);
    store.addLine(7, 1);
    store.addLine(8, 1);
    store.execute(u"UPDATE Cuts SET Mashkof_W = 58.150000000000006, Kanaf_H = NULL, "
                  "Reshet_Kind = NULL, Shalav_Count = 21, U_Cut = 97 WHERE NUM = 1"_s);
    const shop::OrderSource source = shop::readOrders(store.path(), {7});
    ASSERT_EQ(source.lines.size(), 2U);
    const shop::OrderLine& line = source.lines[0];
    EXPECT_EQ(line.order, 7);
    EXPECT_EQ(line.line, 1);
    EXPECT_EQ(line.frame.width, 58.150000000000006);
    EXPECT_EQ(line.frame.height, 99.4);
    EXPECT_EQ(line.frame.count, 2);
    EXPECT_EQ(line.frame.kind, u"משקוף רגיל"_s);
    EXPECT_EQ(line.frame.colour, u"לבן"_s);
    EXPECT_EQ(line.sash.height, std::nullopt);
    EXPECT_EQ(line.sash.count, 4);
    EXPECT_EQ(line.glass.width, 50.2);
    EXPECT_EQ(line.mesh.kind, QString());
    EXPECT_EQ(line.slatCount, 21);
    EXPECT_EQ(line.uCut, 97);
    EXPECT_EQ(line.boxWidth, 0);
    EXPECT_EQ(source.lines[1].line, 2);
}

TEST(OrderSourceTest, OrderGivenTwice_IsReadOnce)
{
    TemporaryStore store;
    store.addOrder(7);
    store.addOrder(9);
    store.addLine(7, 1);
    store.addLine(9, 1);
    const shop::OrderSource source = shop::readOrders(store.path(), {9, 7, 9});
    ASSERT_EQ(source.lines.size(), 2U);
    EXPECT_EQ(source.lines[0].order, 9);
}

TEST(OrderSourceTest, OrderThatDoesNotExist_IsNamed)
{
    TemporaryStore store;
    store.addOrder(7);
    try {
        shop::readOrders(store.path(), {7, 12});
        FAIL();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.description(), u"There is no order 12."_s);
    }
    store.addLine(7, 1); // The failure has left no lock.
    EXPECT_EQ(shop::readOrders(store.path(), {7}).lines.size(), 1U);
}

TEST(OrderSourceTest, Settings_AreReadWithTheLines)
{
    TemporaryStore store;
    store.addOrder(7);
    shop::BarSettings box;
    box.barLength = 700;
    const shop::SettingsByGroup settings{{shop::fixedGroup(shop::Part::Box), box}};
    shop::writeBarTable(store.path(), settings);
    EXPECT_EQ(shop::readOrders(store.path(), {7}).settings, settings);
}

namespace {

/// Returns each explained size of the first line as "part side: explanation", without the marks for
/// the reading direction.
QStringList explanationsIn(const shop::OrderSource& source)
{
    QStringList texts;
    for (const shop::ExplainedSize& each : source.explanations.at(0).sizes)
        texts.append(
            u"%1 %2: %3"_s
                .arg(shop::partName(each.part), shop::sideName(each.side), each.explanation)
                .remove(u'\u2066')
                .remove(u'\u2069'));
    return texts;
}

void addSlidingSeries(TemporaryStore& store)
{
    store.addSeries(u"סדרה"_s, {-0.6, -0.6, -2.8, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2);
}

} // namespace

// By hand: (120 - 2.8) / 2 = 58.6, (120 - 19.6) / 2 = 50.2, (120 - 2.4) / 2 = 58.8.
TEST(OrderSourceTest, SizesAndCounts_AreExplainedFromTheSeries)
{
    TemporaryStore store;
    addSlidingSeries(store);
    store.addOrder(7);
    store.addLine(7, 1);
    const QStringList expected{
        u"frame width: 120 − 0.6 = 119.4\nכמות: 2 (מספר קבוע, בכל הסדרות)"_s,
        u"frame height: 100 − 0.6 = 99.4"_s,
        u"sash width: (120 − 2.8) ÷ 2 = 58.6\nכמות: 2 × 2 = 4 (מספר הכנפיים בסדרה כפול 2)"_s,
        u"sash height: 100 − 6.5 = 93.5"_s,
        u"glass width: (120 − 19.6) ÷ 2 = 50.2\nכמות: 2 (מספר הכנפיים בסדרה)"_s,
        u"glass height: 100 − 19.7 = 80.3"_s,
        u"mesh width: (120 − 2.4) ÷ 2 = 58.8\nכמות: 2 (מספר הכנפיים בסדרה)"_s,
        u"mesh height: 100 − 6.9 = 93.1"_s};
    EXPECT_EQ(explanationsIn(shop::readOrders(store.path(), {7})), expected);
}

TEST(OrderSourceTest, PartThatIsNotMade_IsNotExplained)
{
    TemporaryStore store;
    addSlidingSeries(store);
    store.addOrder(7);
    store.addLine(7, 1);
    store.execute(u"UPDATE Cuts SET Reshet_Kind = 'ללא רשת', Glass_Kind = 'ללא', "
                  "Kanaf_Kind = 'ללא כנף'"_s);
    const QStringList expected{u"frame width: 120 − 0.6 = 119.4\nכמות: 2 (מספר קבוע, בכל הסדרות)"_s,
                               u"frame height: 100 − 0.6 = 99.4"_s};
    EXPECT_EQ(explanationsIn(shop::readOrders(store.path(), {7})), expected);
}

// By hand: 100 - 14 = 86, 100 - 17.6 = 82.4, 120 - 10.3 = 109.7, (100 - 8) / 4 = 23.
TEST(OrderSourceTest, SizesOfAShutter_AreExplainedFromTheOpening)
{
    TemporaryStore store;
    store.addOrder(7);
    store.addLine(7, 1);
    store.execute(u"UPDATE Cuts SET U_Cut = 86, U_Vasa = 82.4, Shalav_Width = 109.7, "
                  "Shalav_Thick = 4, Shalav_Count = 23, Argaz_Width = 120, Argaz_Height = 18"_s);
    const QStringList texts = explanationsIn(shop::readOrders(store.path(), {7}));
    const QStringList expected{
        u"guide height: 100 − 14 = 86"_s, u"guide height: 100 − 17.6 = 82.4"_s,
        u"slat width: 120 − 10.3 = 109.7\nכמות: (100 − 8) ÷ 4 = 23"_s, u"box width: כרוחב הפתח"_s,
        u"box height: כהורדת הגובה של המונובלוק"_s};
    EXPECT_EQ(texts.last(5), expected);
}

// By hand: (100 - 8) / 4.5 is 20.4, which is rounded to 20 slats and never to 21.
TEST(OrderSourceTest, SizeThatDoesNotFollow_HasARowWithoutExplanation)
{
    for (const auto& [slats, expected] : std::vector<std::pair<int, QString>>{
             {20, u"אין הסבר\nכמות: (100 − 8) ÷ 4.5 ≈ 20"_s}, {21, u"אין הסבר"_s}}) {
        TemporaryStore store;
        store.addOrder(7);
        store.addLine(7, 1);
        store.execute(u"UPDATE Cuts SET U_Cut = 85, U_Vasa = 0, Shalav_Width = 117, "
                      "Shalav_Thick = 4.5, Shalav_Count = ?, Argaz_Width = 119"_s,
                      {slats});
        const QStringList texts = explanationsIn(shop::readOrders(store.path(), {7}));
        EXPECT_EQ(texts.last(3),
                  (QStringList{u"guide height: אין הסבר"_s, u"slat width: "_s + expected,
                               u"box width: אין הסבר"_s}));
    }
}

TEST(OrderSourceTest, SeriesThatIsNotInTheCatalogue_IsTold)
{
    TemporaryStore store;
    store.addOrder(7);
    store.addLine(7, 1);
    EXPECT_EQ(explanationsIn(shop::readOrders(store.path(), {7})).first(),
              u"frame width: הסדרה כבר אינה בקטלוג, ולכן אין הסבר למידה."_s);
}

TEST(OrderSourceTest, LinesWithoutExplanations_NeedNoCatalogue)
{
    TemporaryStore store;
    store.addOrder(7);
    store.addLine(7, 1);
    store.execute(u"DROP TABLE Serials"_s);
    const shop::OrderSource source =
        shop::readOrders(store.path(), {7}, shop::Explanations::Skipped);
    EXPECT_EQ(source.lines.size(), 1U);
    EXPECT_TRUE(source.explanations.empty());
    EXPECT_ANY_THROW(shop::readOrders(store.path(), {7}));
}
