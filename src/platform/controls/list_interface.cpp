#include "platform/controls/list_interface.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

namespace controls {

ListInterface::ListInterface(QComboBox* list) : QAccessibleWidget(list, QAccessible::ComboBox) {}

/// Returns the combo box, or nullptr while the combo box is being destroyed.
QComboBox* ListInterface::list() const
{
    return qobject_cast<QComboBox*>(object());
}

int ListInterface::childCount() const
{
    if (list() == nullptr)
        return 0;
    return list()->isEditable() ? 2 : 1;
}

QAccessibleInterface* ListInterface::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    if (index == 0)
        return QAccessible::queryAccessibleInterface(list()->view());
    return QAccessible::queryAccessibleInterface(list()->lineEdit());
}

int ListInterface::indexOfChild(const QAccessibleInterface* child) const
{
    if (child == nullptr || list() == nullptr)
        return -1;
    if (child->object() == list()->view())
        return 0;
    return list()->isEditable() && child->object() == list()->lineEdit() ? 1 : -1;
}

QAccessibleInterface* ListInterface::childAt(int x, int y) const
{
    if (list() == nullptr || !list()->isEditable())
        return nullptr;
    const QLineEdit& box = *list()->lineEdit();
    return box.rect().contains(box.mapFromGlobal(QPoint(x, y))) ? child(1) : nullptr;
}

/// Returns the child that has the focus. In an editable combo box it is the input box.
QAccessibleInterface* ListInterface::focusChild() const
{
    const bool isTypedInto = list() != nullptr && list()->isEditable() && list()->hasFocus();
    return isTypedInto ? child(1) : QAccessibleWidget::focusChild();
}

QString ListInterface::text(QAccessible::Text type) const
{
    if (list() == nullptr || (type != QAccessible::Name && type != QAccessible::Value))
        return QAccessibleWidget::text(type);
    QString current = list()->currentText();
    if (type == QAccessible::Value)
        return current;
    const QString name = QAccessibleWidget::text(QAccessible::Name);
    if (name.isEmpty())
        return current;
    return list()->isEditable() || current.isEmpty() ? name : name + QStringLiteral(": ") + current;
}

QAccessible::State ListInterface::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    if (list() == nullptr)
        return state;
    state.expandable = true;
    state.expanded = list()->view()->isVisible();
    state.editable = list()->isEditable();
    return state;
}

QStringList ListInterface::actionNames() const
{
    return {showMenuAction(), setFocusAction()};
}

void ListInterface::doAction(const QString& name)
{
    if (name != showMenuAction())
        QAccessibleWidget::doAction(name);
    else if (list() != nullptr && list()->view()->isVisible())
        list()->hidePopup();
    else if (list() != nullptr)
        list()->showPopup();
}

} // namespace controls
