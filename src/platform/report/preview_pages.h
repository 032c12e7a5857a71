#pragma once

#include "platform/report/search.h"

#include <QAbstractScrollArea>

namespace report {

/// A document's pages below one another, on a grey ground; those in sight are painted. What a long
/// document has not read is read as soon as the first pages have been painted. A reading failure,
/// then or while painting, is raised from a handler of its own.
class PreviewPages : public QAbstractScrollArea
{
    Q_OBJECT
    /// The page at the top of the view, from 1; 0 without a document. Numbers outside are taken to
    /// the nearest page.
    Q_PROPERTY(int currentPage READ currentPage WRITE setCurrentPage NOTIFY currentPageChanged)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY pageCountChanged)
    /// 1 shows 15 twips as one pixel. Kept between the limits below.
    Q_PROPERTY(double zoomFactor READ zoomFactor WRITE setZoomFactor NOTIFY zoomFactorChanged)

public:
    static constexpr double smallestZoom = 0.1;
    static constexpr double greatestZoom = 5;

    /// What the zoom follows when the window changes its size.
    enum class Fit { None, Page, Width };

    explicit PreviewPages(QWidget* parent = nullptr);

    /// Shows the document from its first page on, at the zoom that stands.
    void setDocument(std::shared_ptr<Document> document);

    int currentPage() const { return currentPage_; }
    void setCurrentPage(int page);
    int pageCount() const;
    double zoomFactor() const { return zoom_; }
    void setZoomFactor(double zoom);
    void setFit(Fit fit);
    /// Reads what the document has not read yet. Pages and their number may be others afterwards.
    /// Raises what reading raises.
    void readAll();
    /// The next greater or smaller step of the usual zooms.
    void zoomIn();
    void zoomOut();

    /// Marks the hit and brings it into sight; takes the mark away where there is none.
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

    static constexpr int gap = 12; ///< Pixels around each sheet.

    std::shared_ptr<Document> document_;
    int currentPage_ = 0;
    double zoom_ = 1;
    Fit fit_ = Fit::None;
    std::optional<Hit> highlight_;
    bool failed_ = false;
    bool readsSoon_ = false; ///< readAll has been put behind the events that wait.
};

} // namespace report
