#include "shell/focus_return.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>

namespace shell {

bool FocusReturn::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && qobject_cast<QDialog*>(watched) != nullptr)
        QTimer::singleShot(0, this, &FocusReturn::activateAWindow);
    return QObject::eventFilter(watched, event);
}

/// Activates the window that accepts input: the current modal window, otherwise the main window.
void FocusReturn::activateAWindow()
{
    if (QApplication::activeWindow() != nullptr)
        return;
    if (QWidget* modal = QApplication::activeModalWidget()) {
        modal->activateWindow();
        return;
    }
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->isVisible() && qobject_cast<QMainWindow*>(each) != nullptr &&
            each->objectName() == QLatin1String("MDIZomrel"))
            each->activateWindow();
    }
}

} // namespace shell
