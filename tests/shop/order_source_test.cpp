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
