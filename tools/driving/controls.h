#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QDialog;
class QTableView;
class QWidget;

/// Functions that operate the program's forms from within the same process.
namespace driving {

/// Returns the object names of the parent's children at all levels, sorted and separated by commas.
QString namesBelow(const QObject& parent);

/// Ends the process because an object that the caller needs is missing. The message contains its
/// name and the names that exist. Throws nothing, because the program's event handlers would catch
/// the exception and show a run-time error box.
[[noreturn]] void failMissing(const char* what, const QString& name, const QString& existing);

/// Returns the child of the form with this object name. If no child has this name, the process ends
/// with a message that lists the existing names.
template <typename Control>
Control& control(const QObject& form, const QString& name)
{
    auto* found = form.findChild<Control*>(name);
    if (found == nullptr)
        failMissing("child", name, namesBelow(form));
    return *found;
}

/// Returns the visible top-level window with this object name, or nullptr if there is none.
QWidget* shownWindow(const QString& name);
/// Closes the visible top-level window with this object name. Does nothing if no such window
/// exists.
void closeWindow(const QString& name);

/// Presses the push button with this name.
void click(const QObject& form, const QString& button);
/// Replaces the text of an input box without moving the focus.
void type(const QObject& form, const QString& box, const QString& text);
/// Moves the focus to an input box, replaces the text of the box, and then removes the focus from
/// the box.
void enter(const QObject& form, const QString& box, const QString& text);
/// Triggers the toolbar or menu command whose tag (the text that its QAction stores as data) is
/// `tag`. If no command has this tag, the process ends with a message that lists the existing tags.
void trigger(const QObject& window, const QString& tag);

/// Returns the displayed text of a cell.
QString cellText(const QTableView& grid, int row, int column);

/// Calls `work` with the modal dialog that the caller opens after this function has returned. The
/// dialog's event loop makes the call. After the call, the dialog is closed if it is still open.
/// Ends the process if an event loop runs before a modal dialog is open. A run-time error in `work`
/// is handled like a run-time error of the program's own code.
void inNextModal(std::function<void(QDialog&)> work);

} // namespace driving
