#include "platform/report/toolbar_keys.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace report {

namespace {

/// Returns the extension button at the end of the toolbar, which shows the controls that do not
/// fit. The button is visible only if some controls do not fit.
QToolButton* extensionOf(const QToolBar& toolbar)
{
    return toolbar.findChild<QToolButton*>(u"qt_toolbar_ext_button"_s, Qt::FindDirectChildrenOnly);
}

/// Returns the widgets of a toolbar in reading order, including hidden widgets.
QList<QWidget*> allWidgets(const QToolBar& toolbar)
{
    QList<QWidget*> found;
    for (QAction* each : toolbar.actions())
        found.append(toolbar.widgetForAction(each));
    found.append(extensionOf(toolbar));
    found.removeAll(nullptr);
    return found;
}

/// Returns all buttons of a toolbar, including hidden buttons.
QList<QToolButton*> allButtons(const QToolBar& toolbar)
{
    QList<QToolButton*> found;
    for (QWidget* each : allWidgets(toolbar)) {
        if (auto* button = qobject_cast<QToolButton*>(each))
            found.append(button);
    }
    return found;
}

bool isExtension(const QToolButton& button)
{
    const auto* toolbar = qobject_cast<const QToolBar*>(button.parentWidget());
    return toolbar != nullptr && &button == extensionOf(*toolbar);
}

bool opensRest(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space ||
           key == Qt::Key_Down;
}

/// Returns true if the widget is inside the toolbar. The popup of a list in the toolbar counts as
/// inside, although the popup is a separate window.
bool isWithin(const QWidget* widget, const QWidget* toolbar)
{
    while (widget != nullptr && widget != toolbar)
        widget = widget->parentWidget();
    return widget != nullptr;
}

/// Returns the buttons of a toolbar that are visible and enabled.
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
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* now) { collapseBehind(now); });
    // Animation is switched off, so that the expanded part of a toolbar appears at once and can get
    // the focus.
    if (auto* window = qobject_cast<QMainWindow*>(toolbars_.constFirst()->window()))
        window->setAnimated(false);
}

void ToolbarKeys::update()
{
    for (const QToolBar* toolbar : std::as_const(toolbars_)) {
        if (QToolButton* extension = extensionOf(*toolbar)) {
            extension->setAccessibleName(u"פקודות נוספות"_s);
            extension->setToolTip(extension->accessibleName());
        }
        for (QToolButton* each : allButtons(*toolbar)) {
            each->installEventFilter(this); // A second call for the same button has no effect.
            if (tab_ == Tab::ReachesButtons)
                each->setFocusPolicy(Qt::TabFocus);
        }
    }
    if (tab_ == Tab::ReachesButtons)
        orderTabs();
}

/// Sets the tab order: Tab visits the toolbars one after the other, and the widgets of each toolbar
/// in reading order.
void ToolbarKeys::orderTabs()
{
    QWidget* former = nullptr;
    for (const QToolBar* toolbar : std::as_const(toolbars_)) {
        for (QWidget* widget : allWidgets(*toolbar)) {
            if ((widget->focusPolicy() & Qt::TabFocus) == 0)
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
    // The event is accepted, so that Escape leaves the toolbar instead of triggering a shortcut of
    // the window.
    if (event->type() == QEvent::ShortcutOverride && (cameFrom_ != nullptr || isExpanded()) &&
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
    if (isExtension(button) && opensRest(event.key())) {
        if (!event.isAutoRepeat())
            toggleRest(button);
        return true;
    }
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
        if (button.defaultAction() != nullptr && button.defaultAction()->menu() != nullptr)
            button.showMenu();
        return true;
    case Qt::Key_Escape:
        if (!collapse())
            leave(button);
        return true;
    default:
        return false;
    }
}

/// Shows the controls that do not fit into the toolbar and moves the focus to the first of them.
/// Hides these controls if they are already shown.
void ToolbarKeys::toggleRest(QToolButton& extension)
{
    if (extension.menu() != nullptr) {
        extension.showMenu(); // A window that is too low for more rows has a menu instead.
        return;
    }
    const auto* toolbar = qobject_cast<const QToolBar*>(extension.parentWidget());
    QList<QWidget*> appearing = allWidgets(*toolbar);
    appearing.removeIf([](const QWidget* each) { return each->isVisible(); });
    extension.click();
    expanded_ = extension.isChecked() ? &extension : nullptr;
    for (QWidget* each : std::as_const(appearing)) {
        const bool takesFocus =
            qobject_cast<const QToolButton*>(each) != nullptr || each->focusPolicy() != Qt::NoFocus;
        if (takesFocus && each->isVisible() && each->isEnabled()) {
            each->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

/// Returns the extension button of the toolbar that a key has expanded, or nullptr if that toolbar
/// is no longer expanded. Also clears the stored pointer to this button.
QToolButton* ToolbarKeys::takeExpanded()
{
    QToolButton* extension = isExpanded() ? qobject_cast<QToolButton*>(expanded_.data()) : nullptr;
    expanded_ = nullptr;
    return extension;
}

/// Returns true if the toolbar that a key has expanded is still expanded. The user may have
/// collapsed it with the mouse.
bool ToolbarKeys::isExpanded() const
{
    const auto* extension = qobject_cast<const QToolButton*>(expanded_.data());
    return extension != nullptr && extension->isChecked();
}

bool ToolbarKeys::collapse()
{
    QToolButton* extension = takeExpanded();
    if (extension == nullptr)
        return false;
    extension->setFocus(Qt::OtherFocusReason);
    extension->click();
    return true;
}

void ToolbarKeys::collapseBehind(const QWidget* focused)
{
    if (expanded_ == nullptr || focused == nullptr || isWithin(focused, expanded_->parentWidget()))
        return;
    if (QToolButton* extension = takeExpanded())
        extension->click();
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
