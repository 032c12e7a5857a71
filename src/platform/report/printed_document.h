#pragma once

#include "platform/report/page.h"
#include "platform/report/pagination.h"

#include <memory>

class QPainter;

namespace report {

/// A document of numbered pages on one paper. Preview, printer, search and PDF files use this
/// interface, so each kind of document is shown and printed in the same way.
class PrintedDocument
{
public:
    PrintedDocument() = default;
    virtual ~PrintedDocument() = default;
    PrintedDocument(const PrintedDocument&) = delete;
    PrintedDocument& operator=(const PrintedDocument&) = delete;

    virtual Paper paper() const = 0;
    virtual int pageCount() const = 0;
    /// Returns the default name of exported files and of the print job, without characters that are
    /// forbidden in file names.
    virtual QString title() const = 0;
    /// Returns the same contents laid out on another paper. Throws ReportWidthTooLarge (8519) or
    /// InvalidProcedureCall (5) if they do not fit.
    virtual std::unique_ptr<PrintedDocument> onPaper(Paper paper) = 0;

    /// Returns true if all contents are loaded. The number of pages is final from then on.
    virtual bool isWhole() const { return true; }
    /// Returns true if the contents of this page are loaded.
    virtual bool hasPage(int /*index*/) const { return true; }
    /// Reads all contents if some are not loaded. Returns true if pages that were returned before,
    /// or the number of pages, are outdated. Throws any error of reading; the document is then
    /// unchanged.
    virtual bool readAll() { return false; }

    /// Returns a page by its index, counted from 0, with all its texts. Throws any error of
    /// reading.
    virtual std::shared_ptr<const Page> page(int index) = 0;
    /// Draws a page. Screen, printer, PDF files and tests all draw through this function. The
    /// painter's origin must be the top left corner of the sheet and its unit the twip.
    virtual void paintPage(const Page& page, QPainter& painter) noexcept = 0;
    /// Creates a page and draws it. Throws any error of reading before anything is drawn.
    void paintPage(int index, QPainter& painter) { paintPage(*page(index), painter); }
};

/// Returns the text without characters that are forbidden in file names.
QString fileTitle(QString title);

} // namespace report
