#pragma once

#include "platform/report/design.h"

namespace report {

/// A sheet as it lies in the printer, in twips.
struct Paper
{
    int width;
    int height;

    bool operator==(const Paper&) const = default;
};

inline constexpr Paper a4Portrait{11906, 16838};

/// Where a report's bands stand on sheets of one paper, and which blocks each page takes. Plain
/// arithmetic over twips. A block is the detail of one row and is never split; page header and
/// footer stand on every page, the footer directly above the bottom margin.
class Pagination
{
public:
    /// Raises 8519 where the report and its side margins are wider than the paper, 5 where the
    /// paper is too short for one block.
    Pagination(const ReportDesign& design, Paper paper);

    Paper paper() const { return paper_; }
    int blocksPerPage() const { return blocksPerPage_; }
    /// Pages that so many blocks fill; an empty report still has one.
    int pageCount(int blocks) const;
    /// The first block of a page; pages and blocks count from 0.
    int firstBlock(int page) const { return page * blocksPerPage_; }
    int blocksOn(int page, int blocks) const;

    /// Left edge of every band, and the tops of the bands, from the corner of the sheet.
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
