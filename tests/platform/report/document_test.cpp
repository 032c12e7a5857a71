#include "platform/report/document.h"

#include "platform/report/small_report.h"

#include "support/doors.h"

#include <gtest/gtest.h>

using namespace report;
using namespace testsupport;
using namespace Qt::StringLiterals;

namespace {

TEST(Document, FillsInFieldsAndPlaceholders)
{
    const FixedToday today(QDate(2026, 2, 15));
    const auto document = smallDocument(smallRows(4));
    ASSERT_EQ(document->pageCount(), 2);
    const auto second = document->page(1);
    ASSERT_EQ(second->bands.size(), 3u);
    EXPECT_EQ(second->bands[0].role, Role::PageHeader);
    EXPECT_EQ(second->bands[1].role, Role::Detail);
    EXPECT_EQ(second->bands[2].role, Role::PageFooter);
    EXPECT_EQ(textOf(*second, 0, u"Title"), u"כותרת"_s);
    EXPECT_EQ(textOf(*second, 0, u"Number"), u"17"_s);
    EXPECT_EQ(textOf(*second, 1, u"NameCaption"), u"שם:"_s);
    EXPECT_EQ(textOf(*second, 1, u"NameField"), u"שורה 4"_s);
    EXPECT_EQ(textOf(*second, 1, u"SizeField"), u"2"_s);
    EXPECT_EQ(textOf(*second, 2, u"Page"), u"2"_s);
    EXPECT_EQ(textOf(*second, 2, u"Pages"), u"2"_s);
    EXPECT_EQ(textOf(*second, 2, u"Day"), u"15/02/2026"_s);
}

TEST(Document, PageOfUnreadRowsReadsAllRowsFirst)
{
    const auto rows = smallRows(30);
    rows->atHand = 4;
    const auto document = smallDocument(rows);
    EXPECT_EQ(document->pageCount(), 10);
    EXPECT_FALSE(document->isWhole());
    EXPECT_TRUE(document->hasPage(0));
    EXPECT_FALSE(document->hasPage(1)) << "two of three rows are not loaded";
    EXPECT_EQ(textOf(*document->page(0), 3, u"NameField"), u"שורה 3"_s);
    EXPECT_EQ(rows->timesReadAll, 0);
    EXPECT_EQ(textOf(*document->page(9), 3, u"NameField"), u"שורה 30"_s);
    EXPECT_EQ(rows->timesReadAll, 1);
    EXPECT_TRUE(document->isWhole());
    EXPECT_TRUE(document->hasPage(9));
    EXPECT_FALSE(document->readAll());
}

TEST(Document, AllPagesShowOneSnapshot)
{
    const auto rows = smallRows(30);
    rows->atHand = 6;
    rows->changeOnReadAll = [](MemoryRows& all) {
        all.replace(4, [](int row) { return MemoryRows::Row{u"אחרת %1"_s.arg(row + 1), 1.0}; });
        return true;
    };
    const auto document = smallDocument(rows);
    EXPECT_EQ(textOf(*document->page(0), 1, u"NameField"), u"שורה 1"_s);
    const auto gone = document->page(9);
    EXPECT_EQ(document->pageCount(), 2);
    EXPECT_EQ(gone->bands.size(), 2u) << "page header and footer only";
    EXPECT_EQ(textOf(*document->page(0), 1, u"NameField"), u"אחרת 1"_s);
    EXPECT_EQ(textOf(*document->page(1), 1, u"NameField"), u"אחרת 4"_s);
    EXPECT_EQ(textOf(*document->page(1), 2, u"Pages"), u"2"_s);
}

TEST(Document, OnPaperReadsAllRowsFirst)
{
    const auto rows = smallRows(30);
    rows->atHand = 6;
    const auto document = smallDocument(rows);
    const auto other = document->onPaper({smallPaper.width, smallPaper.height + 1000});
    EXPECT_TRUE(document->isWhole());
    EXPECT_EQ(other->pageCount(), 8);
}

TEST(Document, PlacesControlsOnTheSheet)
{
    const auto document = smallDocument(smallRows(3));
    const auto page = document->page(0);
    ASSERT_EQ(page->bands.size(), 5u);
    EXPECT_EQ(page->bands[0].controls[1].corner, QPoint(100 + 3000, 1000));
    EXPECT_EQ(page->bands[1].controls[2].corner, QPoint(100 + 1000, 1600 + 90));
    EXPECT_EQ(page->bands[3].controls[3].corner, QPoint(100, 1600 + 2000 + 500));
    EXPECT_EQ(page->bands[4].controls[1].corner, QPoint(100 + 600, 4600));
}

TEST(Document, ReplacesAPlaceholderOnlyAsAWholeCaption)
{
    auto sections = makeSections(smallReport);
    sections[0].Controls(u"Number"_s).setCaption(u"50%p"_s);
    Document document(smallReport, std::move(sections), smallRows(1), smallPaper);
    EXPECT_EQ(textOf(*document.page(0), 0, u"Number"), u"50%p"_s);
}

TEST(Document, KeepsAPlaceholderInACaptionSetAtRunTime)
{
    for (const QString& caption : {u"%p"_s, u"%P"_s, u"%d"_s}) {
        auto sections = makeSections(smallReport);
        sections[0].Controls(u"Number"_s).setCaption(caption);
        sections[2].Controls(u"Day"_s).setCaption(caption);
        Document document(smallReport, std::move(sections), smallRows(1), smallPaper);
        EXPECT_EQ(textOf(*document.page(0), 0, u"Number"), caption);
        EXPECT_EQ(textOf(*document.page(0), 2, u"Day"), caption)
            << "a caption set at run time is no placeholder";
        EXPECT_EQ(textOf(*document.page(0), 2, u"Page"), u"1"_s);
    }
}

TEST(Document, NullIsBlank)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s, u"Size"_s}, 1, [](int) {
        return MemoryRows::Row{QVariant(), QVariant()};
    });
    const auto document = smallDocument(rows);
    EXPECT_EQ(textOf(*document->page(0), 1, u"NameField"), QString());
    EXPECT_EQ(textOf(*document->page(0), 1, u"SizeField"), QString());
}

TEST(Document, FieldNamesIgnoreCase)
{
    const auto rows =
        std::make_shared<MemoryRows>(QStringList{u"other"_s, u"SIZE"_s, u"name"_s}, 1, [](int) {
            return MemoryRows::Row{u"x"_s, 7, u"y"_s};
        });
    const auto document = smallDocument(rows);
    EXPECT_EQ(textOf(*document->page(0), 1, u"NameField"), u"y"_s);
    EXPECT_EQ(textOf(*document->page(0), 1, u"SizeField"), u"7"_s);
}

TEST(Document, UnknownFieldThrowsItemNotFound)
{
    const auto rows = std::make_shared<MemoryRows>(QStringList{u"Name"_s}, 1,
                                                   [](int) { return MemoryRows::Row{u"x"_s}; });
    try {
        smallDocument(rows);
        FAIL();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.number(), runtime::ItemNotFound);
    }
}

TEST(Document, ReadsOnlyTheRowsOfRequestedPages)
{
    const auto rows = smallRows(30000);
    const auto document = smallDocument(rows);
    EXPECT_EQ(document->pageCount(), 10000);
    EXPECT_EQ(rows->rowsRead, 0);
    document->page(0);
    document->page(9999);
    EXPECT_EQ(rows->rowsRead, 6);
    document->page(0);
    EXPECT_EQ(rows->rowsRead, 6) << "the page is cached";
    for (int page = 0; page < 100; ++page)
        document->page(page);
    const int read = rows->rowsRead;
    document->page(0);
    EXPECT_EQ(rows->rowsRead, read + 3) << "the page has been evicted from the cache";
}

TEST(Document, WithoutRowsHasOnePageOfHeaderAndFooter)
{
    const auto rows = smallRows(0);
    const auto document = smallDocument(rows);
    EXPECT_EQ(document->pageCount(), 1);
    EXPECT_EQ(document->page(0)->bands.size(), 2u);
}

TEST(Document, ReadErrorIsThrownByPage)
{
    const auto rows = smallRows(3);
    const auto document = smallDocument(rows);
    rows->failsWith = runtime::Locked;
    EXPECT_THROW(document->page(0), runtime::RunTimeError);
    rows->failsWith.reset();
    EXPECT_EQ(document->page(0)->bands.size(), 5u);
}

TEST(Document, LaterChangesOfTheReportDoNotChangeTheDocument)
{
    auto sections = makeSections(smallReport);
    sections[0].Controls(u"Number"_s).setCaption(u"1"_s);
    Document document(smallReport, sections, smallRows(1), smallPaper);
    sections[0].Controls(u"Number"_s).setCaption(u"2"_s);
    EXPECT_EQ(textOf(*document.page(0), 0, u"Number"), u"1"_s);
}

TEST(Document, OnPaperPaginatesAgain)
{
    const auto document = smallDocument(smallRows(6));
    const auto tall = document->onPaper({5300, 8400});
    EXPECT_EQ(document->pageCount(), 2);
    EXPECT_EQ(tall->pageCount(), 1);
    EXPECT_EQ(textOf(*tall->page(0), 0, u"Number"), u"17"_s);
    EXPECT_THROW(document->onPaper({5299, 8400}), runtime::RunTimeError);
}

TEST(Document, TitleIsWordAndNumber)
{
    EXPECT_EQ(smallDocument(smallRows(1))->title(), u"מסמך 17"_s);
    auto sections = makeSections(smallReport);
    sections[0].Controls(u"Number"_s).setCaption(u"../1:2*3\n"_s);
    Document document(smallReport, std::move(sections), smallRows(1), smallPaper);
    EXPECT_EQ(document.title(), u"מסמך ..123"_s);
}

} // namespace
