#include "driving/controls.h"

#include "platform/runtime/guard.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace driving {

QString namesBelow(const QObject& parent)
{
    QStringList names;
    for (const QObject* each : parent.findChildren<QObject*>()) {
        if (!each->objectName().isEmpty() && !each->objectName().startsWith("qt_"_L1))
            names.append(each->objectName());
    }
    names.sort();
    return names.join(u", "_s);
}

void failMissing(const char* what, const QString& name, const QString& existing)
{
    qFatal("no %s named %s; existing names: %s", what, qUtf8Printable(name),
           qUtf8Printable(existing));
}

QWidget* shownWindow(const QString& name)
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == name && each->isVisible())
            return each;
    }
    return nullptr;
}

void closeWindow(const QString& name)
{
    if (QWidget* window = shownWindow(name))
        window->close();
}

void click(const QObject& form, const QString& button)
{
    control<QPushButton>(form, button).click();
}

void type(const QObject& form, const QString& box, const QString& text)
{
    control<QLineEdit>(form, box).setText(text);
}

void enter(const QObject& form, const QString& box, const QString& text)
{
    auto& input = control<QLineEdit>(form, box);
    input.setFocus();
    input.setText(text);
    input.clearFocus();
}

void trigger(const QObject& window, const QString& tag)
{
    QStringList tags;
    for (QAction* each : window.findChildren<QAction*>()) {
        if (each->data().toString() == tag) {
            each->trigger();
            return;
        }
        if (!each->data().toString().isEmpty())
            tags.append(each->data().toString());
    }
    failMissing("command", tag, tags.join(u", "_s));
}

QString cellText(const QTableView& grid, int row, int column)
{
    return grid.model()->index(row, column).data().toString();
}

void inNextModal(std::function<void(QDialog&)> work)
{
    QTimer::singleShot(0, qApp, [work = std::move(work)] {
        runtime::guarded([&work] {
            const QPointer<QDialog> dialog =
                qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr)
                qFatal("no modal dialog is open");
            work(*dialog);
            if (dialog != nullptr && dialog->isVisible())
                dialog->done(QDialog::Rejected);
        });
    });
}

} // namespace driving
