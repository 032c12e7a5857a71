#pragma once

#include <QAccessibleWidget>

class QComboBox;

namespace controls {

/// The screen-reader interface of a combo box. Its name is the accessible name of the combo box,
/// whereas Qt's own interface returns the current text as the name. If the user cannot type into
/// the combo box, the current text is appended to the name, because screen readers do not find the
/// text elsewhere. The children are the popup and, in an editable combo box, the input box.
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
