#include "support/widgets.h"

#include <QLocale>

namespace testsupport {

QString namesBelow(const QObject& parent)
{
    QStringList names;
    for (const QObject* each : parent.findChildren<QObject*>()) {
        if (!each->objectName().isEmpty() && !each->objectName().startsWith(QLatin1String("qt_")))
            names.append(each->objectName());
    }
    names.sort();
    return names.join(QStringLiteral(", "));
}

QStringList tabOrderFrom(QWidget* first)
{
    QStringList names;
    QWidget* each = first;
    do {
        if ((each->focusPolicy() & Qt::TabFocus) != 0 && each->isVisible() && each->isEnabled() &&
            !each->objectName().isEmpty() && each->focusProxy() == nullptr)
            names.append(each->objectName());
        each = each->nextInFocusChain();
    } while (each != first);
    return names;
}

void beforeApplication()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QLocale::setDefault(QLocale::c());
}

void afterApplication()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setLayoutDirection(Qt::RightToLeft);
}

} // namespace testsupport
