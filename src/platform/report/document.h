#pragma once

#include "platform/report/pagination.h"
#include "platform/report/sections.h"

#include <QPoint>
#include <QRect>

#include <deque>
#include <memory>

class QPainter;

namespace ado {
class Recordset;
}

namespace report {

class PageInk;

/// One control of a page with what it says there.
struct PrintedControl
{
    const Control* control;
    QPoint corner; ///< Twips from the corner of the sheet.
    QString text;  ///< Placeholders and fields filled in; empty for lines and images.
};

/// A section as it stands on a page, its controls in the order of the design.
struct Band
{
    Role role;
    std::vector<PrintedControl> controls;
};

/// What stands on one sheet: page header, one band per block, page footer. Good for as long as its
/// document lives.
struct Page
{
    int index = 0; ///< From 0.
    std::vector<Band> bands;
};

/// A report with its captions, pictures and rows as they stand at one moment, laid on one paper.
/// Its pages are made when they are asked for; a few are kept.
///
/// All pages show the rows of one moment. A long record source holds its first rows only when it is
/// opened (ado::Recordset), so that the first page stands at once; whoever shows the document calls
/// readAll soon afterwards, and printing, exporting and searching begin with it. A page with rows
/// that are not at hand is never made from what the store holds by then: page() calls readAll
/// first, which takes all rows from one later moment, those of the first page included.
class Document
{
public:
    /// The design must outlive the document; the sections are taken over as they are. Raises 3265
    /// for a field that the rows do not have, and what Pagination raises.
    Document(const ReportDesign& design, std::vector<Section> sections,
             std::shared_ptr<ado::Recordset> rows, Paper paper);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// The same report on another paper. Raises what Pagination and readAll raise.
    std::unique_ptr<Document> onPaper(Paper paper);

    const ReportDesign& design() const { return design_; }
    const Pagination& pagination() const { return pagination_; }
    Paper paper() const { return pagination_.paper(); }
    int blockCount() const;
    int pageCount() const { return pagination_.pageCount(blockCount()); }
    /// What the report is filed under: the design's word and number, fit for a file name.
    QString title() const;

    /// True once all rows are at hand: the number of pages is final then.
    bool isWhole() const;
    /// True where the rows of the page are at hand.
    bool hasPage(int index) const;
    /// Reads all rows where the document is not whole. True if pages given before are others now,
    /// or their number is. Raises what reading raises, and nothing has changed then.
    bool readAll();

    /// The page, made from the rows at hand or else after readAll; pages count from 0. Raises what
    /// reading raises.
    std::shared_ptr<const Page> page(int index);
    /// The only way to ink: screen, printer, files and tests alike. The painter stands at the
    /// corner of the sheet and is scaled to twips. Draws nothing but the page and raises nothing.
    void paintPage(const Page& page, QPainter& painter) noexcept;
    /// Both at once. Raises what reading raises, before anything is drawn.
    void paintPage(int index, QPainter& painter) { paintPage(*page(index), painter); }

private:
    void bindFields();
    std::shared_ptr<const Page> makePage(int index);
    using Row = std::vector<QVariant>;
    Band band(const Section& section, int top, int pageIndex, const Row& row) const;
    QString textOf(const Control& control, int ordinal, int pageIndex, const Row& row) const;

    const ReportDesign& design_;
    std::vector<Section> sections_;
    std::shared_ptr<ado::Recordset> rows_;
    Pagination pagination_;
    std::vector<std::vector<int>> ordinals_; ///< Of the fields, section by section; -1 for others.
    std::deque<std::shared_ptr<const Page>> keptPages_;
    std::unique_ptr<PageInk> ink_;
};

} // namespace report
