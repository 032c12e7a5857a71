#pragma once

#include "platform/report/page.h"
#include "platform/report/pagination.h"

#include <memory>

class QPainter;

namespace report {

/// Interface of a document with numbered pages of one paper size. The preview, printing, search and
/// the PDF export use only this interface, so that they handle all kinds of documents in the same
/// way.
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
    /// Returns a document with the same contents, laid out on another paper. Throws
    /// ReportWidthTooLarge (8519) or InvalidProcedureCall (5) if the contents do not fit.
    virtual std::unique_ptr<PrintedDocument> onPaper(Paper paper) = 0;

    /// Returns true if all contents are loaded. The number of pages does not change after all
    /// contents are loaded.
    virtual bool isWhole() const { return true; }
    /// Returns true if the contents of this page are loaded.
    virtual bool hasPage(int /*index*/) const { return true; }
    /// Reads all contents if some contents are not loaded. Returns true if the number of pages has
    /// changed, or if a page that was returned before has changed. Throws any error of reading.
    /// After an error, the document is unchanged.
    virtual bool readAll() { return false; }

    /// Returns a page by its index, counted from 0, with all its texts. Throws any error of
    /// reading.
    virtual std::shared_ptr<const Page> page(int index) = 0;
    /// Draws a page. Screen, printer, PDF files and tests all use this function. The painter's
    /// origin must be the top left corner of the sheet, and its unit must be the twip.
    virtual void paintPage(const Page& page, QPainter& painter) noexcept = 0;
    /// Creates a page and draws it. Throws any error of reading. In this case nothing has been
    /// drawn.
    void paintPage(int index, QPainter& painter) { paintPage(*page(index), painter); }
};

/// Returns the text without characters that are forbidden in file names.
QString fileTitle(QString title);

} // namespace report
