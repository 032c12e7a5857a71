#include "platform/controls/reading_anchor.h"

#include <QMdiSubWindow>
#include <QStyle>
#include <QWindowStateChangeEvent>

#include <algorithm>

namespace controls {

namespace {

constexpr QPoint firstPlace{12, 12};

/// Moves the rectangle `place` into the rectangle `room`. If `place` is wider than `room`, the edge
/// of `place` where reading starts stays visible.
QRect keptInside(QRect place, const QRect& room, Qt::LayoutDirection direction)
{
    if (place.width() <= room.width())
        place.moveLeft(std::clamp(place.left(), 0, room.width() - place.width()));
    else if (direction == Qt::RightToLeft)
        place.moveRight(room.right());
    else
        place.moveLeft(0);
    place.moveTop(std::clamp(place.top(), 0, std::max(0, room.height() - place.height())));
    return place;
}

} // namespace

ReadingAnchor::ReadingAnchor(QMdiSubWindow& window, QWidget& viewport)
    : QObject(&window), window_(window), viewport_(viewport), start_(firstPlace)
{
    window.installEventFilter(this);
    viewport.installEventFilter(this);
    place();
}

bool ReadingAnchor::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &viewport_ && event->type() == QEvent::Resize)
        place();
    else if (watched == &window_ && event->type() == QEvent::Move)
        remember();
    else if (watched == &window_ && event->type() == QEvent::WindowStateChange)
        returnToPlace(static_cast<QWindowStateChangeEvent*>(event)->oldState());
    return QObject::eventFilter(watched, event);
}

bool ReadingAnchor::holdsNormalPlace() const
{
    return !window_.isMaximized() && !window_.isMinimized();
}

void ReadingAnchor::place()
{
    if (!holdsNormalPlace())
        return;
    const Qt::LayoutDirection direction = viewport_.layoutDirection();
    const QRect logical(start_, window_.size());
    const QRect visual = QStyle::visualRect(direction, viewport_.rect(), logical);
    placing_ = true;
    window_.move(keptInside(visual, viewport_.rect(), direction).topLeft());
    placing_ = false;
}

void ReadingAnchor::remember()
{
    if (placing_ || !holdsNormalPlace())
        return;
    start_ = QStyle::visualRect(viewport_.layoutDirection(), viewport_.rect(), window_.geometry())
                 .topLeft();
}

/// Restores the position of a child window that is no longer maximised or minimised. Qt restores
/// the old coordinates, which are wrong if the MDI area has been resized in the meantime.
void ReadingAnchor::returnToPlace(Qt::WindowStates oldState)
{
    const bool wasElsewhere = (oldState & (Qt::WindowMaximized | Qt::WindowMinimized)) != 0;
    if (!wasElsewhere || !holdsNormalPlace())
        return;
    QMetaObject::invokeMethod(
        this,
        [this, start = start_] {
            start_ = start;
            place();
        },
        Qt::QueuedConnection);
}

} // namespace controls
