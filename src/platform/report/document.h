#pragma once

#include "platform/report/printed_document.h"
#include "platform/report/row_source.h"

#include <deque>

namespace report {

class PageInk;

/// A snapshot of a report's captions, pictures and rows, laid out on one paper. The document
/// creates a page when the page is requested, and caches the most recent pages.
///
/// All pages show the rows as they were at one moment. A long record source initially contains only
/// its first rows (RowSource), so that the first page appears immediately. readAll replaces these
/// rows by all rows, read at one later moment. If page() needs a row that is not loaded, it calls
/// readAll first, so that a page never combines rows of two moments. A caller that shows the
/// document calls readAll soon afterwards. Printing, exporting and searching start with readAll.
class Document : public PrintedDocument
{
public:
    /// Copies the sections. The design is not copied and must outlive the document. Throws
    /// ItemNotFound (3265) if `rows` has no column for a field of the design, and the errors of
    /// Pagination.
    Document(const ReportDesign& design, std::vector<Section> sections,
             std::shared_ptr<RowSource> rows, Paper paper);
    ~Document() override;

    /// Throws any error of Pagination and readAll.
    std::unique_ptr<PrintedDocument> onPaper(Paper paper) override;

    const ReportDesign& design() const { return design_; }
    const Pagination& pagination() const { return pagination_; }
    Paper paper() const override { return pagination_.paper(); }
    int blockCount() const;
    int pageCount() const override { return pagination_.pageCount(blockCount()); }
    /// Returns the title of the document. It consists of a word for the kind of document, which the
    /// design contains, and the order number.
    QString title() const override;

    bool isWhole() const override;
    bool hasPage(int index) const override;
    bool readAll() override;

    /// Returns a page. Calls readAll first if a row of the page is not loaded.
    std::shared_ptr<const Page> page(int index) override;
    void paintPage(const Page& page, QPainter& painter) noexcept override;
    using PrintedDocument::paintPage;

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
