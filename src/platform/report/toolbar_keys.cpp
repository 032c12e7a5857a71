#include "platform/report/toolbar_keys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

#include <utility>

namespace report {

namespace {

/// Returns all buttons of a toolbar, also hidden ones.
QList<QToolButton*> allButtons(const QToolBar& toolbar)
{
    QList<QToolButton*> found;
    for (QAction* each : toolbar.actions()) {
        if (auto* button = qobject_cast<QToolButton*>(toolbar.widgetForAction(each)))
            found.append(button);
    }
    return found;
}

/// Returns the buttons that the user can press.
QList<QToolButton*> usableButtons(const QToolBar& toolbar)
{
    QList<QToolButton*> found = allButtons(toolbar);
    found.removeIf(
        [](const QToolButton* each) { return !each->isVisible() || !each->isEnabled(); });
    return found;
}

} // namespace

ToolbarKeys::ToolbarKeys(QList<QToolBar*> toolbars, Tab tab)
    : QObject(toolbars.constFirst()), toolbars_(std::move(toolbars)), tab_(tab)
{
    update();
    auto* shortcut = new QShortcut(Qt::Key_F10, toolbars_.constFirst()->window());
    connect(shortcut, &QShortcut::activated, this, [this] { enter(); });
}

void ToolbarKeys::update()
{
    for (const QToolBar* toolbar : std::as_const(toolbars_)) {
        for (QToolButton* each : allButtons(*toolbar)) {
            each->installEventFilter(this); // A second call for the same button has no effect.
            if (tab_ == Tab::ReachesButtons)
                each->setFocusPolicy(Qt::TabFocus);
        }
    }
    if (tab_ == Tab::ReachesButtons)
        orderTabs();
}

/// Tab reaches the toolbars one after the other and their widgets as they stand.
void ToolbarKeys::orderTabs()
{
    QWidget* former = nullptr;
    for (const QToolBar* toolbar : std::as_const(toolbars_)) {
        for (QAction* each : toolbar->actions()) {
            QWidget* widget = toolbar->widgetForAction(each);
            if (widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            if (former != nullptr)
                QWidget::setTabOrder(former, widget);
            former = widget;
        }
    }
}

bool ToolbarKeys::eventFilter(QObject* watched, QEvent* event)
{
    auto* button = qobject_cast<QToolButton*>(watched);
    if (button == nullptr)
        return false;
    if (event->type() == QEvent::KeyPress)
        return handle(*button, *static_cast<QKeyEvent*>(event));
    // Escape leaves the toolbar before it triggers a shortcut of the window.
    if (event->type() == QEvent::ShortcutOverride && cameFrom_ != nullptr &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        event->accept();
    return false;
}

void ToolbarKeys::enter()
{
    QWidget* focused = QApplication::focusWidget();
    for (const QToolBar* toolbar : std::as_const(toolbars_)) {
        const QList<QToolButton*> buttons = usableButtons(*toolbar);
        if (buttons.isEmpty())
            continue;
        auto* button = qobject_cast<QToolButton*>(focused);
        if (button == nullptr || !toolbars_.contains(button->parentWidget()))
            cameFrom_ = focused;
        buttons.constFirst()->setFocus(Qt::ShortcutFocusReason);
        return;
    }
}

bool ToolbarKeys::handle(QToolButton& button, const QKeyEvent& event)
{
    const int onwards = button.isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        step(button, event.key() == onwards ? 1 : -1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event.isAutoRepeat())
            button.click();
        return true;
    case Qt::Key_Down:
        if (button.defaultAction()->menu() != nullptr)
            button.showMenu();
        return true;
    case Qt::Key_Escape:
        leave(button);
        return true;
    default:
        return false;
    }
}

void ToolbarKeys::step(const QToolButton& from, int by)
{
    const auto* toolbar = qobject_cast<const QToolBar*>(from.parentWidget());
    const QList<QToolButton*> all =
        toolbar == nullptr ? QList<QToolButton*>() : usableButtons(*toolbar);
    if (all.isEmpty())
        return;
    const qsizetype position = all.indexOf(&from) + by;
    all.at((position + all.size()) % all.size())->setFocus(Qt::OtherFocusReason);
}

void ToolbarKeys::leave(QToolButton& button)
{
    if (cameFrom_ != nullptr)
        cameFrom_->setFocus(Qt::OtherFocusReason);
    else
        button.clearFocus();
    cameFrom_ = nullptr;
}

} // namespace report
