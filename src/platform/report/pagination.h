#pragma once

#include "platform/report/design.h"

namespace report {

/// The width and height of a sheet in twips, in the orientation in which the sheet is printed.
struct Paper
{
    int width;
    int height;

    bool operator==(const Paper&) const = default;
};

inline constexpr Paper a4Portrait{11906, 16838};

/// Computes the positions, in twips, of a report's page header, blocks and page footer on the
/// paper, and which blocks each page contains. A block is the detail section of one row and is
/// never split. The page header and the page footer appear on every page. The page footer is
/// directly above the bottom margin.
class Pagination
{
public:
    /// Throws ReportWidthTooLarge (8519) if the report with its side margins is wider than the
    /// paper, and InvalidProcedureCall (5) if the paper is too short for one block.
    Pagination(const ReportDesign& design, Paper paper);

    Paper paper() const { return paper_; }
    int blocksPerPage() const { return blocksPerPage_; }
    /// Returns the number of pages for this number of blocks (printed rows). A report without
    /// blocks has one page.
    int pageCount(int blocks) const;
    /// Returns the index of the first block of a page. Pages and blocks are counted from 0.
    int firstBlock(int page) const { return page * blocksPerPage_; }
    int blocksOn(int page, int blocks) const;

    /// left() returns the common left edge of the page header, the blocks and the page footer.
    /// headerTop(), blockTop() and footerTop() return their top edges. All values are in twips,
    /// measured from the top left corner of the sheet.
    int left() const { return left_; }
    int headerTop() const { return headerTop_; }
    int blockTop(int blockOnPage) const { return detailTop_ + blockOnPage * blockHeight_; }
    int footerTop() const { return footerTop_; }

private:
    Paper paper_;
    int left_;
    int headerTop_;
    int detailTop_;
    int footerTop_;
    int blockHeight_;
    int blocksPerPage_;
};

} // namespace report
