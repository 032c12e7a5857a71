#pragma once

#include <QAccessible>
#include <QString>
#include <QStringList>

#include <functional>

namespace testsupport {

/// Stands for a screen reader that runs during the object's lifetime: the toolkit sends its events,
/// and the object records what got the focus. Only one may exist at a time.
class ScreenReader
{
public:
    ScreenReader();
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// The names of what got the focus since the last call, in order.
    QStringList takeFocused();
};

/// Calls the function with the interface and everything below it that is not invisible. The
/// function returns false if the children of an interface are not wanted.
void walk(QAccessibleInterface* from, const std::function<bool(QAccessibleInterface&)>& visit);

/// Returns the controls below the widget that can take the focus but have no name, or a role that
/// says nothing. Cells are named by their contents and are left out.
QStringList speechFaults(QWidget& form);

} // namespace testsupport
