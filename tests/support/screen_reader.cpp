#include "support/screen_reader.h"

#include <QMetaEnum>
#include <QWidget>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

QStringList& focused()
{
    static QStringList names;
    return names;
}

/// Asks for the children after every event, as screen readers do.
void recordFocus(QAccessibleEvent* event)
{
    QAccessibleInterface* part = event->accessibleInterface();
    if (part != nullptr && part->childCount() > 0)
        part->child(part->childCount() - 1);
    if (event->type() != QAccessible::Focus)
        return;
    focused().append(part == nullptr ? u"(nothing)"_s : part->text(QAccessible::Name));
}

/// Only the platform can say that a screen reader runs. Qt has no public function for it.
void setReaderRuns(bool runs)
{
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(runs);
}

/// Roles of controls that can take the focus. A role that is missing here says nothing about how
/// the control is used.
const QList<QAccessible::Role> tellingRoles{
    QAccessible::EditableText, QAccessible::ComboBox,       QAccessible::Table,
    QAccessible::List,         QAccessible::Button,         QAccessible::ButtonMenu,
    QAccessible::CheckBox,     QAccessible::ButtonDropDown, QAccessible::StaticText};

bool isPart(const QAccessibleInterface& control)
{
    return control.role() == QAccessible::Cell || control.role() == QAccessible::ListItem;
}

QString describe(QAccessibleInterface& control)
{
    const QObject* object = control.object();
    return u"%1 of role %2 with the name \"%3\""_s
        .arg(object == nullptr ? u"part"_s
                               : QString::fromLatin1(object->metaObject()->className()) + u' ' +
                                     object->objectName())
        .arg(int(control.role()))
        .arg(control.text(QAccessible::Name));
}

} // namespace

ScreenReader::ScreenReader()
{
    focused().clear();
    QAccessible::installUpdateHandler(recordFocus);
    setReaderRuns(true);
}

ScreenReader::~ScreenReader()
{
    setReaderRuns(false);
    QAccessible::installUpdateHandler(nullptr);
}

QStringList ScreenReader::takeFocused()
{
    return std::exchange(focused(), {});
}

void walk(QAccessibleInterface* from, const std::function<bool(QAccessibleInterface&)>& visit)
{
    if (from == nullptr || from->state().invisible || !visit(*from))
        return;
    for (int i = 0; i < from->childCount(); ++i)
        walk(from->child(i), visit);
}

QStringList speechFaults(QWidget& form)
{
    QStringList faults;
    walk(QAccessible::queryAccessibleInterface(&form), [&](QAccessibleInterface& control) {
        if (isPart(control))
            return false;
        if (!control.state().focusable)
            return true;
        // The text of a list would hide that the list itself has no name.
        const auto* list = control.role() == QAccessible::ComboBox
                               ? qobject_cast<const QWidget*>(control.object())
                               : nullptr;
        const bool isNamed = list != nullptr ? !list->accessibleName().trimmed().isEmpty()
                                             : !control.text(QAccessible::Name).trimmed().isEmpty();
        const bool isView =
            control.object() != nullptr && control.object()->inherits("report::PreviewPages");
        if (!isNamed || (!isView && !tellingRoles.contains(control.role())))
            faults.append(describe(control));
        return true;
    });
    return faults;
}

} // namespace testsupport
