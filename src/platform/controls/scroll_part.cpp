#include "platform/controls/scroll_part.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace controls {

namespace {

/// Minimum distance, in pixels, between the control with the focus and the edge of the scroll area.
constexpr int margin = 8;

/// Returns the scroll position, in one direction, at which the control is visible. If the control
/// is larger than the visible area, its start is visible.
int startShowing(int start, int length, int seen, int room)
{
    if (start < seen || length > room)
        return start;
    return std::max(seen, start + length - room);
}

QWidget* buttonRow(const QList<QPushButton*>& buttons, QWidget* parent)
{
    auto* row = new QWidget(parent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(margin, margin / 2, margin, margin / 2);
    layout->addStretch();
    for (QPushButton* each : buttons) {
        each->setMinimumSize(each->size());
        layout->addWidget(each);
    }
    layout->addStretch();
    return row;
}

} // namespace

ScrollPart::ScrollPart(QWidget* contents, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(contents);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*former*/, QWidget* focused) { bringFocusIntoView(focused); });
}

QSize ScrollPart::sizeHint() const
{
    return widget()->sizeHint().expandedTo(widget()->minimumSize());
}

void ScrollPart::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    bringFocusIntoView(QApplication::focusWidget());
}

/// Scrolls until the whole control is visible. QScrollArea::ensureWidgetVisible only makes the
/// cursor of an input box visible, and it scrolls horizontally in the wrong direction in a
/// right-to-left layout.
void ScrollPart::bringFocusIntoView(QWidget* focused)
{
    if (focused == nullptr || !widget()->isAncestorOf(focused))
        return;
    const QRect control = QRect(focused->mapTo(widget(), QPoint(0, 0)), focused->size())
                              .adjusted(-margin, -margin, margin, margin);
    const QPoint seen = -widget()->pos();
    verticalScrollBar()->setValue(
        startShowing(control.top(), control.height(), seen.y(), viewport()->height()));
    // Horizontal positions are measured from the edge where reading starts, because the scroll bar
    // counts from there.
    const int hidden = widget()->width() - viewport()->width();
    const int start =
        isRightToLeft() ? widget()->width() - control.left() - control.width() : control.left();
    const int seenStart = isRightToLeft() ? hidden - seen.x() : seen.x();
    horizontalScrollBar()->setValue(
        startShowing(start, control.width(), seenStart, viewport()->width()));
}

QSize fittedSize(QSize wanted, QSize room)
{
    const int bar = QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    if (wanted.height() > room.height())
        wanted.rwidth() += bar;
    if (wanted.width() > room.width())
        wanted.rheight() += bar;
    return wanted.boundedTo(room);
}

QWidget* fitIntoRoom(QWidget& window, QSize room, const QList<QPushButton*>& buttons)
{
    const QSize full = window.size();
    if (full.width() <= room.width() && full.height() <= room.height())
        return &window;
    auto* contents = new QWidget;
    for (QWidget* each : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (!each->isWindow())
            each->setParent(contents);
    }
    contents->setFixedSize(full);
    auto* column = new QVBoxLayout(&window);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(new ScrollPart(contents, &window), 1);
    column->addWidget(buttonRow(buttons, &window));
    window.setFixedSize(fittedSize(full, room));
    return contents;
}

} // namespace controls
