#pragma once

#include "platform/report/page.h"
#include "platform/report/pagination.h"
#include "platform/report/row_source.h"

#include <deque>
#include <memory>

class QPainter;

namespace report {

class PageInk;

/// A snapshot of a report's captions, pictures and rows, laid out on one paper. The document
/// creates a page when it is requested and caches the most recent pages.
///
/// All pages show the rows of one moment. A long record source initially holds only its first rows
/// (RowSource), so that the first page appears immediately. The caller that shows the document
/// calls readAll soon afterwards. Printing, exporting and searching start with readAll. A page
/// never combines rows of two moments: if page() needs a row that is not loaded, it calls readAll
/// first, which reads all rows again at one later moment.
class Document
{
public:
    /// Copies the sections. The design must outlive the document. Throws ItemNotFound (3265) if the
    /// rows lack a field of the design, and any error of Pagination.
    Document(const ReportDesign& design, std::vector<Section> sections,
             std::shared_ptr<RowSource> rows, Paper paper);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Returns the same report laid out on another paper. Throws any error of Pagination and
    /// readAll.
    std::unique_ptr<Document> onPaper(Paper paper);

    const ReportDesign& design() const { return design_; }
    const Pagination& pagination() const { return pagination_; }
    Paper paper() const { return pagination_.paper(); }
    int blockCount() const;
    int pageCount() const { return pagination_.pageCount(blockCount()); }
    /// Returns the default name of exported files and of the print job: the design's word and the
    /// order number, without characters that are forbidden in file names.
    QString title() const;

    /// Returns true if all rows are loaded. The number of pages is final from then on.
    bool isWhole() const;
    /// Returns true if all rows of this page are loaded.
    bool hasPage(int index) const;
    /// Reads all rows if some are not loaded. Returns true if pages that were returned before, or
    /// the number of pages, are outdated. Throws any error of reading; the document is then
    /// unchanged.
    bool readAll();

    /// Returns a page by its index, counted from 0. Calls readAll first if a row of the page is not
    /// loaded. Throws any error of reading.
    std::shared_ptr<const Page> page(int index);
    /// Draws a page. Screen, printer, PDF files and tests all draw through this function. The
    /// painter's origin must be the top left corner of the sheet and its unit the twip.
    void paintPage(const Page& page, QPainter& painter) noexcept;
    /// Creates a page and draws it. Throws any error of reading before anything is drawn.
    void paintPage(int index, QPainter& painter) { paintPage(*page(index), painter); }

private:
    void bindFields();
    std::shared_ptr<const Page> makePage(int index);
    Band band(const Section& section, int top, int pageIndex, const Row& row) const;
    QString textOf(const Control& control, int ordinal, int pageIndex, const Row& row) const;

    const ReportDesign& design_;
    std::vector<Section> sections_;
    std::shared_ptr<RowSource> rows_;
    Pagination pagination_;
    std::vector<std::vector<int>> ordinals_; ///< Field positions in the record source, section by
                                             ///< section; -1 for other controls.
    std::deque<std::shared_ptr<const Page>> keptPages_;
    std::unique_ptr<PageInk> ink_;
};

} // namespace report
