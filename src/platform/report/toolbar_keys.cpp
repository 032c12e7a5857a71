#include "shell/toolbar_keys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

namespace shell {

ToolbarKeys::ToolbarKeys(QToolBar* toolbar) : QObject(toolbar), toolbar_(toolbar)
{
    for (QToolButton* each : buttons())
        each->installEventFilter(this);
    auto* shortcut = new QShortcut(Qt::Key_F10, toolbar->window());
    connect(shortcut, &QShortcut::activated, this, [this] { enter(); });
}

bool ToolbarKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    auto* button = qobject_cast<QToolButton*>(watched);
    return button != nullptr && handle(*button, static_cast<QKeyEvent*>(event)->key());
}

QList<QToolButton*> ToolbarKeys::buttons() const
{
    QList<QToolButton*> found;
    for (QAction* each : toolbar_->actions()) {
        if (auto* button = qobject_cast<QToolButton*>(toolbar_->widgetForAction(each)))
            found.append(button);
    }
    return found;
}

void ToolbarKeys::enter()
{
    QWidget* focused = QApplication::focusWidget();
    if (focused == nullptr || focused->parentWidget() != toolbar_)
        cameFrom_ = focused;
    buttons().constFirst()->setFocus(Qt::ShortcutFocusReason);
}

bool ToolbarKeys::handle(QToolButton& button, int key)
{
    const int onwards = toolbar_->isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        step(button, key == onwards ? 1 : -1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        button.click();
        return true;
    case Qt::Key_Down:
        if (button.defaultAction()->menu() != nullptr)
            button.showMenu();
        return true;
    case Qt::Key_Escape:
        if (cameFrom_ != nullptr)
            cameFrom_->setFocus(Qt::OtherFocusReason);
        else
            button.clearFocus();
        return true;
    default:
        return false;
    }
}

void ToolbarKeys::step(const QToolButton& from, int by)
{
    const QList<QToolButton*> all = buttons();
    const qsizetype position = all.indexOf(&from) + by;
    all.at((position + all.size()) % all.size())->setFocus(Qt::OtherFocusReason);
}

} // namespace shell
