#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

namespace testsupport {

/// Turns the mouse wheel over the middle of the widget by one notch, towards the user.
inline void turnWheel(QWidget& widget)
{
    const QPointF middle = widget.rect().center();
    QWheelEvent turn(middle, widget.mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &turn);
}

} // namespace testsupport
