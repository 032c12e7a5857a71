#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace shell {

/// Activates a window of the program if none is active after a dialog has closed. This happens
/// without a window manager, and keyboard input is then lost. The activated window is the modal
/// dialog that is still open. If there is none, it is the window that opened the closed dialog,
/// otherwise the main window.
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
