#pragma once

#include <QAccessibleWidget>

class QComboBox;

namespace controls {

/// A drop-down list as screen readers see it. Qt gives a list its current text as name, so that the
/// list has no name of its own. Here the name is the accessible name of the list. If the user
/// cannot type into the list, the current text follows, because screen readers do not find it
/// elsewhere. The children are the popup and the box into which the user types, if there is one.
class ListInterface : public QAccessibleWidget
{
public:
    explicit ListInterface(QComboBox* list);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text type) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    QComboBox* list() const;
};

} // namespace controls
