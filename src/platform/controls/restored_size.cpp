#include "platform/controls/restored_size.h"

#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindowStateChangeEvent>

namespace controls {

RestoredSize::RestoredSize(QWidget& window) : QObject(&window), window_(window), settled_(this)
{
    window.installEventFilter(this);
    settled_.setSingleShot(true);
    settled_.setInterval(200);
    connect(&settled_, &QTimer::timeout, this, &RestoredSize::keepInside);
}

bool RestoredSize::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &window_ && event->type() == QEvent::WindowStateChange) {
        const auto former = static_cast<QWindowStateChangeEvent*>(event)->oldState();
        if (former.testFlag(Qt::WindowMaximized) && !window_.isMaximized() &&
            !window_.isMinimized()) {
            maximised_ = window_.size();
            // The window system sets the restored size and position some time after the change of
            // the window state. Therefore a timer starts the check of the window's size. The check
            // cannot wait for a resize or move event, because Qt sends none if the restored size
            // and position are those of the maximised window.
            settled_.start();
        }
    }
    return QObject::eventFilter(watched, event);
}

void RestoredSize::keepInside()
{
    if (window_.isMaximized() || window_.isMinimized())
        return;
    const QRect room = window_.screen()->availableGeometry();
    const QRect place = window_.frameGeometry();
    const bool isSmaller = place.width() < room.width() && place.height() < room.height();
    const bool isChosen = !isSmaller && window_.size() != maximised_;
    if (isChosen || (isSmaller && room.contains(place)))
        return;
    const QSize size = isSmaller ? window_.size() : room.size() * 4 / 5;
    window_.setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, room));
}

} // namespace controls
