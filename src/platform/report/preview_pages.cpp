#include "platform/report/preview_pages.h"

#include "platform/runtime/guard.h"
#include "platform/runtime/twips.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <limits>

namespace report {

namespace {

constexpr double twipsPerPixel = runtime::twipsPerPixel;
constexpr int scrollStep = 40;
constexpr double zoomSteps[] = {0.1, 0.25, 0.5, 0.75, 1, 1.25, 1.5, 2, 3, 4, 5};

} // namespace

PreviewPages::PreviewPages(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    // The vertical scroll bar is always visible, because a scroll bar that appears on demand would
    // change the width from which the zoom is computed.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    verticalScrollBar()->setSingleStep(scrollStep);
    horizontalScrollBar()->setSingleStep(scrollStep);
}

void PreviewPages::setDocument(std::shared_ptr<PrintedDocument> document)
{
    document_ = std::move(document);
    highlight_.reset();
    failed_ = false;
    readsSoon_ = false;
    currentPage_ = 1;
    applyFit();
    updateScrollBars();
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    viewport()->update();
    emit pageCountChanged(pageCount());
    emit currentPageChanged(currentPage_);
}

int PreviewPages::pageCount() const
{
    return document_ == nullptr ? 0 : document_->pageCount();
}

void PreviewPages::setCurrentPage(int page)
{
    if (document_ == nullptr)
        return;
    verticalScrollBar()->setValue(sheetTop(std::clamp(page, 1, pageCount()) - 1) - gap);
    followScrolling();
}

void PreviewPages::readAll()
{
    if (document_ == nullptr || !document_->readAll())
        return;
    highlight_.reset();
    updateScrollBars();
    emit pageCountChanged(pageCount());
    followScrolling();
    viewport()->update();
}

void PreviewPages::setZoomFactor(double zoom)
{
    fit_ = Fit::None;
    applyZoom(zoom);
}

void PreviewPages::setFit(Fit fit)
{
    fit_ = fit;
    applyFit();
}

void PreviewPages::zoomIn()
{
    const auto next = std::upper_bound(std::begin(zoomSteps), std::end(zoomSteps), zoom_ + 0.001);
    setZoomFactor(next == std::end(zoomSteps) ? greatestZoom : *next);
}

void PreviewPages::zoomOut()
{
    const auto here = std::lower_bound(std::begin(zoomSteps), std::end(zoomSteps), zoom_ - 0.001);
    setZoomFactor(here == std::begin(zoomSteps) ? smallestZoom : *std::prev(here));
}

void PreviewPages::setHighlight(const std::optional<Hit>& hit)
{
    highlight_ = hit;
    viewport()->update();
    if (!hit || document_ == nullptr)
        return;
    const double scale = zoom_ / twipsPerPixel;
    const int top = sheetTop(hit->page) + qFloor(hit->place.top() * scale);
    const int bottom = sheetTop(hit->page) + qCeil(hit->place.bottom() * scale);
    QScrollBar* bar = verticalScrollBar();
    if (top - gap < bar->value() || bottom + gap > bar->value() + viewport()->height())
        bar->setValue(top - viewport()->height() / 3);
    followScrolling();
}

QSize PreviewPages::sheetSize() const
{
    const Paper paper = document_ == nullptr ? a4Portrait : document_->paper();
    return {qRound(paper.width * zoom_ / twipsPerPixel),
            qRound(paper.height * zoom_ / twipsPerPixel)};
}

int PreviewPages::stride() const
{
    return sheetSize().height() + gap;
}

/// Returns the distance between the start of the scroll area and the top edge of a sheet, in
/// pixels. The distance is limited, because the range of a scroll bar is an int. At the greatest
/// zoom, about 190,000 A4 sheets in portrait format reach the limit. The user cannot scroll to
/// pages beyond the limit, but search, printing and export include these pages.
int PreviewPages::sheetTop(int page) const
{
    constexpr qint64 reach = std::numeric_limits<int>::max() / 2;
    return static_cast<int>(std::min(gap + qint64{page} * stride(), reach));
}

/// Returns a sheet's rectangle in viewport pixels. If the sheet is wider than the viewport, its
/// right edge is visible at first, because reading starts there.
QRect PreviewPages::sheetRect(int page) const
{
    const QSize size = sheetSize();
    const QScrollBar* bar = horizontalScrollBar();
    const int scrolled = isRightToLeft() ? bar->maximum() - bar->value() : bar->value();
    const int left = std::max(gap, (viewport()->width() - size.width()) / 2) - scrolled;
    return {QPoint(left, sheetTop(page) - verticalScrollBar()->value()), size};
}

void PreviewPages::applyZoom(double zoom)
{
    const double wanted = std::clamp(zoom, smallestZoom, greatestZoom);
    if (wanted == zoom_)
        return;
    // The vertical position is restored, because zooming must keep the same part of the document at
    // the top of the view.
    const double place = static_cast<double>(verticalScrollBar()->value()) / stride();
    zoom_ = wanted;
    updateScrollBars();
    verticalScrollBar()->setValue(qRound(place * stride()));
    followScrolling();
    viewport()->update();
    emit zoomFactorChanged(zoom_);
}

void PreviewPages::applyFit()
{
    if (fit_ == Fit::None || document_ == nullptr)
        return;
    const QSizeF room(viewport()->width() - 2 * gap, viewport()->height() - 2 * gap);
    const double wide = room.width() * twipsPerPixel / document_->paper().width;
    const double high = room.height() * twipsPerPixel / document_->paper().height;
    applyZoom(fit_ == Fit::Width ? wide : std::min(wide, high));
}

void PreviewPages::updateScrollBars()
{
    const QSize view = viewport()->size();
    const int pages = pageCount();
    // The scroll range is large enough to scroll the last page to the top of the view.
    const int end = pages == 0 ? 0 : sheetTop(pages) - view.height();
    const int lastTop = pages == 0 ? 0 : sheetTop(pages - 1) - gap;
    verticalScrollBar()->setRange(0, std::max({0, end, lastTop}));
    verticalScrollBar()->setPageStep(view.height());
    horizontalScrollBar()->setRange(0, std::max(0, sheetSize().width() + 2 * gap - view.width()));
    horizontalScrollBar()->setPageStep(view.width());
}

void PreviewPages::followScrolling()
{
    if (document_ == nullptr)
        return;
    const int halfSeen = std::min(viewport()->height(), sheetSize().height()) / 2;
    const int page = (verticalScrollBar()->value() + halfSeen) / stride() + 1;
    const int inRange = std::clamp(page, 1, pageCount());
    if (inRange != currentPage_) {
        currentPage_ = inRange;
        emit currentPageChanged(currentPage_);
    }
}

void PreviewPages::scrollContentsBy(int, int)
{
    followScrolling();
    viewport()->update();
}

void PreviewPages::resizeEvent(QResizeEvent*)
{
    applyFit();
    updateScrollBars();
    followScrolling();
}

void PreviewPages::wheelEvent(QWheelEvent* event)
{
    if ((event->modifiers() & Qt::ControlModifier) == 0) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    if (event->angleDelta().y() > 0)
        zoomIn();
    else if (event->angleDelta().y() < 0)
        zoomOut();
    event->accept();
}

void PreviewPages::paintEvent(QPaintEvent* event)
{
    if (document_ == nullptr || failed_)
        return;
    try {
        paintSheets(event->rect());
        readAllSoon();
    } catch (...) {
        raiseLater(std::current_exception());
    }
}

/// Queues one call of readAll for the document. The call happens after the first pages of the
/// document have been painted.
void PreviewPages::readAllSoon()
{
    if (readsSoon_ || document_->isWhole())
        return;
    readsSoon_ = true;
    QMetaObject::invokeMethod(
        this,
        [this, document = document_] {
            if (document != document_ || failed_)
                return;
            try {
                readAll();
            } catch (...) {
                raiseLater(std::current_exception());
            }
        },
        Qt::QueuedConnection);
}

void PreviewPages::paintSheets(const QRect& area)
{
    const auto pageAt = [&](int y) {
        const int place = verticalScrollBar()->value() + y - gap;
        return std::clamp(place / stride(), 0, pageCount() - 1);
    };
    // The remaining rows are read before anything is painted, because reading them may change the
    // pages.
    if (!document_->hasPage(pageAt(area.bottom())))
        readAll();
    QPainter painter(viewport());
    const int last = pageAt(area.bottom());
    for (int page = pageAt(area.top()); page <= last; ++page)
        paintSheet(*document_->page(page), painter);
}

void PreviewPages::paintSheet(const Page& page, QPainter& painter)
{
    const QRect sheet = sheetRect(page.index);
    painter.save();
    painter.fillRect(sheet.translated(2, 2), palette().shadow());
    painter.fillRect(sheet, Qt::white);
    painter.setClipRect(sheet);
    painter.translate(sheet.topLeft());
    painter.scale(zoom_ / twipsPerPixel, zoom_ / twipsPerPixel);
    document_->paintPage(page, painter);
    if (highlight_ && highlight_->page == page.index) {
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        painter.fillRect(highlight_->place, QColor(255, 230, 90));
    }
    painter.restore();
}

/// Queues the error `failure`, so that it is thrown later from the event loop. No exception may
/// leave a paint event, and no message box may open during a paint event. After an error, the
/// document is no longer painted.
void PreviewPages::raiseLater(std::exception_ptr failure)
{
    failed_ = true;
    QMetaObject::invokeMethod(
        this,
        [failure = std::move(failure)] {
            runtime::guarded([&] { std::rethrow_exception(failure); });
        },
        Qt::QueuedConnection);
}

} // namespace report
