#include "platform/dao/row_window.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Window = dao::RowWindow<std::string>;

std::vector<std::string> page(std::size_t start, std::size_t count = 4)
{
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < count; ++i)
        rows.push_back("row " + std::to_string(start + i));
    return rows;
}

/// Returns the numbers of the cached rows among the first 40 as one text.
std::string kept(const Window& window)
{
    std::string all;
    for (std::size_t row = 0; row < 40; ++row) {
        if (const std::string* found = window.find(row)) {
            EXPECT_EQ(*found, "row " + std::to_string(row));
            all += std::to_string(row) + " ";
        }
    }
    return all;
}

TEST(RowWindowTest, pageStart_isTheFirstRowOfThePage)
{
    const Window window(4, 2);
    EXPECT_EQ(window.pageStart(0), 0u);
    EXPECT_EQ(window.pageStart(3), 0u);
    EXPECT_EQ(window.pageStart(4), 4u);
    EXPECT_EQ(window.pageStart(39), 36u);
}

TEST(RowWindowTest, pagesUpToTheLimit_areKept)
{
    Window window(4, 2);
    EXPECT_EQ(kept(window), "");
    window.keep(0, page(0));
    window.keep(8, page(8));
    EXPECT_EQ(kept(window), "0 1 2 3 8 9 10 11 ");
    window.keep(20, page(20));
    EXPECT_EQ(kept(window), "8 9 10 11 20 21 22 23 ");
}

TEST(RowWindowTest, pageAboveTheLimit_replacesTheLeastRecentlyUsedOne)
{
    Window window(4, 2);
    window.keep(0, page(0));
    window.keep(8, page(8));
    window.touch(2);
    window.touch(100);
    window.keep(20, page(20));
    EXPECT_EQ(kept(window), "0 1 2 3 20 21 22 23 ");
}

TEST(RowWindowTest, pageKeptAgain_isReplaced)
{
    Window window(4, 2);
    window.keep(0, page(0));
    window.keep(4, page(4, 1));
    window.keep(4, page(4, 2));
    EXPECT_EQ(kept(window), "0 1 2 3 4 5 ");
}

TEST(RowWindowTest, forgottenRow_isNoLongerFound)
{
    Window window(4, 2);
    window.keep(0, page(0));
    window.keep(4, page(4, 1));
    window.forget(1);
    window.forget(7);
    window.forget(30);
    EXPECT_EQ(kept(window), "0 2 3 4 ");
}

TEST(RowWindowTest, rowRemoved_pagesFromItOnAreDiscarded)
{
    Window window(4, 4);
    for (std::size_t start : {0u, 4u, 8u})
        window.keep(start, page(start));
    window.remove(6);
    EXPECT_EQ(kept(window), "0 1 2 3 ");
}

} // namespace
