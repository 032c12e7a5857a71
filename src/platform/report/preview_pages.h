#pragma once

#include "platform/report/search.h"

#include <QAbstractScrollArea>

namespace report {

/// Shows the pages of a document in one column on a grey background and paints only the visible
/// pages. After the first pages have been painted, the widget reads the rest of a long document. A
/// reading error is thrown later from the event loop, where the run-time error box can open.
class PreviewPages : public QAbstractScrollArea
{
    Q_OBJECT
    /// The number of the page at the top of the view, counted from 1, or 0 if there is no document.
    /// Setting a number outside the range selects the nearest page.
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    /// The zoom factor. At a factor of 1, 15 twips are shown as one pixel. A value outside the
    /// range from smallestZoom to greatestZoom is replaced by the nearest limit.
    Q_PROPERTY(double zoomFactor READ zoomFactor WRITE setZoomFactor NOTIFY zoomFactorChanged)

public:
    static constexpr double smallestZoom = 0.1;
    static constexpr double greatestZoom = 5;

    /// Selects what the zoom factor fits to the window when the window is resized: nothing, the
    /// whole page, or the width of the page.
    enum class Fit { None, Page, Width };

    explicit PreviewPages(QWidget* parent = nullptr);

    /// Shows the document from its first page at the current zoom.
    void setDocument(std::shared_ptr<PrintedDocument> document);

    int currentPage() const { return currentPage_; }
    void setCurrentPage(int page);
    int pageCount() const;
    double zoomFactor() const { return zoom_; }
    void setZoomFactor(double zoom);
    void setFit(Fit fit);
    /// Reads all rows of the document. The pages and the number of pages may then be different.
    /// Throws any error of reading.
    void readAll();
    /// zoomIn() and zoomOut() set the zoom factor to the next larger or the next smaller standard
    /// value.
    void zoomIn();
    void zoomOut();

    /// Highlights the search hit and scrolls to it. If `hit` is empty, removes the highlight.
    void setHighlight(const std::optional<Hit>& hit);
    const std::optional<Hit>& highlight() const { return highlight_; }

signals:
    void currentPageChanged(int page);
    void pageCountChanged(int pages);
    void zoomFactorChanged(double zoom);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QSize sheetSize() const;
    int stride() const;
    int sheetTop(int page) const;
    QRect sheetRect(int page) const;
    void applyZoom(double zoom);
    void applyFit();
    void updateScrollBars();
    void followScrolling();
    void readAllSoon();
    void paintSheets(const QRect& area);
    void paintSheet(const Page& page, QPainter& painter);
    void raiseLater(std::exception_ptr failure);

    static constexpr int gap = 12; ///< Distance between and around the sheets in pixels.

    std::shared_ptr<PrintedDocument> document_;
    int currentPage_ = 0;
    double zoom_ = 1;
    Fit fit_ = Fit::None;
    std::optional<Hit> highlight_;
    bool failed_ = false;
    bool readsSoon_ = false; ///< True once readAll has been queued for the current document.
};

} // namespace report
