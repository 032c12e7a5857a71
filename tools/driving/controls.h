#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QDialog;
class QTableView;
class QWidget;

/// Steps that operate the program's forms in this process.
namespace driving {

/// Returns the names of all named children, sorted and separated by commas.
QString namesBelow(const QObject& parent);

/// Ends the process with a message that names what is missing and what exists. It does not throw,
/// because a guarded handler would turn the exception into a run-time error box of the program.
[[noreturn]] void failMissing(const char* what, const QString& name, const QString& existing);

/// Returns the child with this object name. If there is none, the process ends with a message that
/// lists the existing names.
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
/// Closes the visible top-level window with this object name, if there is one.
void closeWindow(const QString& name);

/// Presses the push button with this name.
void click(const QObject& form, const QString& button);
/// Replaces the text of an input box and leaves the focus where it is.
void type(const QObject& form, const QString& box, const QString& text);
/// Moves the focus to an input box, replaces its text and takes the focus away again.
void enter(const QObject& form, const QString& box, const QString& text);
/// Triggers the command with this tag, from the window's toolbar or one of its menus. If there is
/// none, the process ends with a message that lists the existing tags.
void trigger(const QObject& window, const QString& tag);

/// Returns the displayed text of a cell.
QString cellText(const QTableView& grid, int row, int column);

/// Runs the work in the event loop of the next modal dialog and rejects the dialog afterwards if it
/// is still open. If the event loop runs while no modal dialog is open, the process ends. A
/// run-time error in the work is handled as one of the program.
void inNextModal(std::function<void(QDialog&)> work);

} // namespace driving
