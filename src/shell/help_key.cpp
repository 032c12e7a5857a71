#include "shell/help_key.h"

#include "platform/runtime/guard.h"
#include "shell/help_window.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace shell {

bool HelpKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
        return false;
    // F1 does not open the help while a list or menu is open, because the help window would be a
    // child of a list or menu that soon closes.
    if (!key->isAutoRepeat() && QApplication::activePopupWidget() == nullptr)
        runtime::guarded([&] { open(static_cast<QWidget*>(watched)->window()); });
    return true;
}

void HelpKey::open(QWidget* window)
{
    if (help_ == window)
        return;
    if (help_ && help_->parentWidget() != window)
        delete help_;
    if (!help_)
        help_ = new HelpWindow(window);
    help_->show();
    help_->raise();
    help_->activateWindow();
}

} // namespace shell
