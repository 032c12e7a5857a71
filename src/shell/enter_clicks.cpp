#include "shell/enter_clicks.h"

#include <QKeyEvent>
#include <QPushButton>

namespace shell {

bool EnterClicks::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* button = qobject_cast<QPushButton*>(watched);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (button == nullptr || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter))
        return false;
    if (!key->isAutoRepeat() && button->isEnabled())
        button->click();
    return true;
}

} // namespace shell
