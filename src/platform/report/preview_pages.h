#pragma once

#include "platform/report/search.h"

#include <QAbstractScrollArea>

namespace report {

/// Shows a document's pages in one column on a grey background and paints only the visible ones.
/// After the first pages have been painted, it reads the rest of a long document. A reading error
/// is thrown later from the event loop, where the run-time error box can open.
class PreviewPages : public QAbstractScrollArea
{
    Q_OBJECT
    /// The page at the top of the view, counted from 1; 0 without a document. Setting a value
    /// outside the range selects the nearest page.
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    /// The zoom factor; 1 shows 15 twips as one pixel. Values are clamped to the limits below.
    Q_PROPERTY(double zoomFactor READ zoomFactor WRITE setZoomFactor NOTIFY zoomFactorChanged)

public:
    static constexpr double smallestZoom = 0.1;
    static constexpr double greatestZoom = 5;

    /// What the zoom keeps fitted to the window when the window is resized: nothing, the whole
    /// page, or its width.
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
    /// Reads all rows of the document. Afterwards its pages and their number may differ. Throws any
    /// error of reading.
    void readAll();
    /// These functions set the zoom to the next larger or smaller standard value.
    void zoomIn();
    void zoomOut();

    /// Highlights the hit and scrolls to it. Without a hit, the highlight is removed.
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
