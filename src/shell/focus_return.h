#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace shell {

/// Activates another window of the program after a dialog has closed: the modal dialog that is
/// still open, otherwise the window that opened the closed dialog, such as the preview, otherwise
/// the main window. Without a window manager, no window is active after a dialog closes, and
/// keyboard input is lost.
///
/// Install the object as an event filter on the application.
class FocusReturn : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void activateAWindow(const QPointer<QWidget>& opener);
};

} // namespace shell
