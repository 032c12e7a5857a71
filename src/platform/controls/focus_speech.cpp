#include "platform/controls/focus_speech.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QMdiSubWindow>

namespace controls {

FocusSpeech::FocusSpeech(QMdiSubWindow& window) : QObject(&window)
{
    window.installEventFilter(this);
}

bool FocusSpeech::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && QAccessible::isActive())
        QMetaObject::invokeMethod(this, &FocusSpeech::announceFocus, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void FocusSpeech::announceFocus()
{
    QWidget* focused = QApplication::focusWidget();
    QAccessibleInterface* control = QAccessible::queryAccessibleInterface(focused);
    if (control == nullptr || focused == parent())
        return;
    // If a part of the control has the focus, such as the current cell of a grid, the focus event
    // is sent for this part.
    QAccessibleInterface* part = control->focusChild();
    QAccessibleEvent event(part != nullptr ? part : control, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

} // namespace controls
