#include "shell/focus_return.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>

namespace shell {

bool FocusReturn::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide) {
        if (const auto* dialog = qobject_cast<QDialog*>(watched)) {
            const QWidget* parent = dialog->parentWidget();
            const QPointer<QWidget> opener = parent != nullptr ? parent->window() : nullptr;
            QTimer::singleShot(0, this, [this, opener] { activateAWindow(opener); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void FocusReturn::activateAWindow(const QPointer<QWidget>& opener)
{
    if (QApplication::activeWindow() != nullptr)
        return;
    if (QWidget* modal = QApplication::activeModalWidget()) {
        modal->activateWindow();
        return;
    }
    if (opener != nullptr && opener->isVisible()) {
        opener->activateWindow();
        return;
    }
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->isVisible() && qobject_cast<QMainWindow*>(each) != nullptr &&
            each->objectName() == QLatin1String("MDIZomrel"))
            each->activateWindow();
    }
}

} // namespace shell
