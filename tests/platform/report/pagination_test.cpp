#include "platform/report/pagination.h"

#include "platform/report/small_report.h"

#include <gtest/gtest.h>

using namespace report;
using testsupport::smallPaper;
using testsupport::smallReport;

namespace {

/// Heights of the order report's sections: page header 4020, block 2250, page footer 450.
constexpr SectionDesign tallSections[] = {
    {u"ReportHead", Role::ReportHeader, 0, {}}, {u"Head", Role::PageHeader, 4020, {}},
    {u"Block", Role::Detail, 2250, {}},         {u"Foot", Role::PageFooter, 450, {}},
    {u"ReportFoot", Role::ReportFooter, 0, {}},
};

constexpr ReportDesign tallReport{
    .name = u"Tall",
    .caption = u"",
    .fontFamily = u"David",
    .width = 10800,
    .leftMargin = 500,
    .rightMargin = 500,
    .topMargin = defaultVerticalMargin,
    .bottomMargin = defaultVerticalMargin,
    .sections = tallSections,
    .documentWord = u"",
    .documentNumberLabel = u"",
};

struct PaperCase
{
    const char* reason;
    Paper paper;
    int blocksPerPage;
};

TEST(Pagination, PageHoldsAsManyWholeBlocksAsFit)
{
    // The height for blocks is that of the sheet reduced by 7350 twips: both margins, page header
    // and page footer.
    const PaperCase cases[] = {
        {"A4 upright: 9488 hold four of 2250", {11906, 16838}, 4},
        {"US Letter: 8490 hold three", {12240, 15840}, 3},
        {"A4 lying: 4556 hold two", {16838, 11906}, 2},
        {"exactly two blocks", {11800, 7350 + 4500}, 2},
        {"one twip short of two", {11800, 7350 + 4499}, 1},
        {"exactly one block", {11800, 7350 + 2250}, 1},
    };
    for (const PaperCase& each : cases)
        EXPECT_EQ(Pagination(tallReport, each.paper).blocksPerPage(), each.blocksPerPage)
            << each.reason;
}

struct CountCase
{
    const char* reason;
    int blocks;
    int pages;
    int onLastPage;
};

TEST(Pagination, BreaksOnlyBetweenBlocks)
{
    const CountCase cases[] = {
        {"an empty report is one page of head and foot", 0, 1, 0},
        {"one block", 1, 1, 1},
        {"the page is just full", 4, 1, 4},
        {"one too many goes whole to the next page", 5, 2, 1},
        {"two pages are just full", 8, 2, 4},
        {"and one more", 9, 3, 1},
        {"many", 10000, 2500, 4},
        {"many and one more", 10001, 2501, 1},
    };
    const Pagination pagination(tallReport, a4Portrait);
    for (const CountCase& each : cases) {
        EXPECT_EQ(pagination.pageCount(each.blocks), each.pages) << each.reason;
        EXPECT_EQ(pagination.blocksOn(each.pages - 1, each.blocks), each.onLastPage) << each.reason;
        EXPECT_EQ(pagination.firstBlock(each.pages - 1), 4 * (each.pages - 1)) << each.reason;
        EXPECT_EQ(pagination.blocksOn(each.pages, each.blocks), 0) << each.reason;
    }
}

TEST(Pagination, PlacesTheBands)
{
    const Pagination pagination(tallReport, a4Portrait);
    EXPECT_EQ(pagination.left(), 500);
    EXPECT_EQ(pagination.headerTop(), 1440);
    EXPECT_EQ(pagination.blockTop(0), 1440 + 4020);
    EXPECT_EQ(pagination.blockTop(3), 1440 + 4020 + 3 * 2250);
    EXPECT_EQ(pagination.footerTop(), 16838 - 1440 - 450);
}

int refusal(const ReportDesign& design, Paper paper)
{
    try {
        const Pagination refused(design, paper);
        return 0;
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
}

TEST(Pagination, TooSmallPaperThrows)
{
    EXPECT_EQ(refusal(tallReport, {11800, 16838}), 0) << "width and margins fit exactly";
    EXPECT_EQ(refusal(tallReport, {11799, 16838}), runtime::ReportWidthTooLarge);
    EXPECT_EQ(refusal(tallReport, {8391, 11906}), runtime::ReportWidthTooLarge) << "A5";
    EXPECT_EQ(refusal(tallReport, {11800, 7350 + 2249}), runtime::InvalidProcedureCall)
        << "no block fits";
    EXPECT_EQ(refusal(tallReport, {11800, 5000}), runtime::InvalidProcedureCall)
        << "page header and footer do not fit";
}

TEST(Pagination, UsesTheDesignsMargins)
{
    const Pagination pagination(smallReport, smallPaper);
    EXPECT_EQ(pagination.blocksPerPage(), 3); // (5400 - 1000 - 500 - 600 - 300) / 1000
    EXPECT_EQ(pagination.left(), 100);
    EXPECT_EQ(pagination.footerTop(), 4600);
}

} // namespace
