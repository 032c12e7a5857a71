#pragma once

#include "platform/report/printed_document.h"
#include "platform/report/sections.h"
#include "shop/paper/sheet_ink.h"

namespace shop::paper {

/// A printed document that consists of finished sheets. The sheets are not laid out again for
/// another paper.
class SheetDocument : public report::PrintedDocument
{
public:
    SheetDocument(QString title, report::Paper paper, std::vector<Sheet> sheets);

    report::Paper paper() const override { return paper_; }
    int pageCount() const override { return static_cast<int>(sheets_.size()); }
    QString title() const override { return title_; }
    /// Returns a document with the same sheets on the given paper. Throws InvalidProcedureCall (5)
    /// if the paper is smaller than the paper of this document.
    std::unique_ptr<report::PrintedDocument> onPaper(report::Paper paper) override;
    std::shared_ptr<const report::Page> page(int index) override;
    void paintPage(const report::Page& page, QPainter& painter) noexcept override;
    using PrintedDocument::paintPage;

    const std::vector<Sheet>& sheets() const { return sheets_; }

private:
    QString title_;
    report::Paper paper_;
    std::vector<Sheet> sheets_;
    SheetInk ink_;
};

/// Returns the document as the contents of a PDF file. Throws DiskOrNetworkError (3043) if the file
/// cannot be made.
QByteArray pdfOf(report::PrintedDocument& document);

} // namespace shop::paper
