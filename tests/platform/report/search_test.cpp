#include "platform/report/search.h"

#include "platform/report/small_report.h"

#include <gtest/gtest.h>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

const Progress goOn = [](int, int) { return true; };

std::optional<Hit> next(Document& document, const QString& text, const std::optional<Hit>& from,
                        int startPage = 0)
{
    return findText(document, text, SearchDirection::Forward, from, startPage, goOn);
}

std::optional<Hit> previous(Document& document, const QString& text, const std::optional<Hit>& from,
                            int startPage = 0)
{
    return findText(document, text, SearchDirection::Backward, from, startPage, goOn);
}

TEST(Search, ForwardSearchWrapsAround)
{
    const auto document = smallDocument(smallRows(8)); // A page holds three rows.
    const auto first = next(*document, u"שורה"_s, std::nullopt);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->page, 0);
    EXPECT_EQ(first->place, QRect(100 + 1000, 1600 + 90, 3000, 300));
    std::optional<Hit> hit = first;
    std::vector<int> pages{hit->page};
    for (int i = 0; i < 7; ++i) {
        hit = next(*document, u"שורה"_s, hit);
        pages.push_back(hit->page);
    }
    EXPECT_EQ(pages, (std::vector<int>{0, 0, 0, 1, 1, 1, 2, 2}));
    hit = next(*document, u"שורה"_s, hit);
    EXPECT_EQ(hit->page, 0);
    EXPECT_EQ(hit->control, first->control);
}

TEST(Search, BackwardSearchWrapsAround)
{
    const auto document = smallDocument(smallRows(8));
    auto hit = previous(*document, u"שורה"_s, next(*document, u"שורה"_s, std::nullopt));
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->page, 2);
    EXPECT_EQ(hit->place.top(), 1600 + 1000 + 90);
    hit = previous(*document, u"שורה"_s, hit);
    EXPECT_EQ(hit->place.top(), 1600 + 90);
}

TEST(Search, StartsAtTheGivenPage)
{
    const auto document = smallDocument(smallRows(8));
    EXPECT_EQ(next(*document, u"כותרת"_s, std::nullopt, 1)->page, 1);
    EXPECT_EQ(next(*document, u"שורה 2"_s, std::nullopt, 2)->page, 0) << "after wrapping around";
}

TEST(Search, FindsTheOnlyHitAgain)
{
    const auto document = smallDocument(smallRows(2));
    const auto hit = next(*document, u"שורה 2"_s, std::nullopt);
    ASSERT_TRUE(hit);
    EXPECT_EQ(next(*document, u"שורה 2"_s, hit)->place, hit->place);
    EXPECT_EQ(previous(*document, u"שורה 2"_s, hit)->place, hit->place);
}

TEST(Search, IgnoresCase)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 1, [](int) {
        return MemoryRows::Row{u"Pvc לבן"_s, 1};
    });
    const auto document = smallDocument(rows);
    EXPECT_TRUE(next(*document, u"pVC"_s, std::nullopt));
}

TEST(Search, FindsATextWithInvisibleCharactersBetweenItsLetters)
{
    const auto document =
        smallDocument(std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 1, [](int) {
            return MemoryRows::Row{u"\u20661×200\u2069 (7-1)"_s, 1.0};
        }));
    EXPECT_TRUE(next(*document, u"1×200 (7-1)"_s, std::nullopt));
    EXPECT_FALSE(next(*document, u"1×200(7-1)"_s, std::nullopt));
}

TEST(Search, ReturnsNothingWithoutAHit)
{
    const auto document = smallDocument(smallRows(8));
    EXPECT_FALSE(next(*document, u"אין"_s, std::nullopt));
    EXPECT_FALSE(previous(*document, u"אין"_s, std::nullopt));
    EXPECT_FALSE(next(*document, QString(), std::nullopt));
}

TEST(Search, StopsWhenCancelled)
{
    const auto rows = smallRows(3000);
    const auto document = smallDocument(rows);
    const auto hit = findText(*document, u"שורה 3000"_s, SearchDirection::Forward, std::nullopt, 0,
                              [](int done, int) { return done < 4; });
    EXPECT_FALSE(hit);
    EXPECT_EQ(rows->rowsRead, 15);
}

} // namespace
