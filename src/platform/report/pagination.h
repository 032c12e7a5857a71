#pragma once

#include "platform/report/design.h"

namespace report {

/// The size of a sheet in twips, in its printed orientation.
struct Paper
{
    int width;
    int height;

    bool operator==(const Paper&) const = default;
};

inline constexpr Paper a4Portrait{11906, 16838};

/// Computes the positions of a report's bands on the paper and the blocks of each page, in twips. A
/// block is the detail section of one row and is never split. The page header and page footer
/// appear on every page; the footer is directly above the bottom margin.
class Pagination
{
public:
    /// Throws ReportWidthTooLarge (8519) if the report with its side margins is wider than the
    /// paper, and InvalidProcedureCall (5) if the paper is too short for one block.
    Pagination(const ReportDesign& design, Paper paper);

    Paper paper() const { return paper_; }
    int blocksPerPage() const { return blocksPerPage_; }
    /// Returns the number of pages for this number of blocks. An empty report has one page.
    int pageCount(int blocks) const;
    /// Returns the index of the first block of a page. Pages and blocks are counted from 0.
    int firstBlock(int page) const { return page * blocksPerPage_; }
    int blocksOn(int page, int blocks) const;

    /// These functions return the left edge of every band and the top edges of the bands, in twips
    /// from the top left corner of the sheet.
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
