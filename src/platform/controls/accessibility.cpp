#include "platform/controls/accessibility.h"

#include "platform/controls/grid_interface.h"
#include "platform/controls/list_interface.h"

#include <QComboBox>
#include <QTableView>

namespace controls {

namespace {

/// Creates the screen-reader interface if the object is a grid or a combo box, and returns nullptr
/// otherwise. Qt calls this function first with the class name of the object and then with the
/// names of its base classes.
QAccessibleInterface* makeInterface(const QString& className, QObject* object)
{
    if (className == u"controls::DBGrid") {
        if (auto* grid = qobject_cast<QTableView*>(object))
            return new GridInterface(grid);
    } else if (className == u"QComboBox") {
        if (auto* list = qobject_cast<QComboBox*>(object))
            return new ListInterface(list);
    }
    return nullptr;
}

} // namespace

void installAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace controls
