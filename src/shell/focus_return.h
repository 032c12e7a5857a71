#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace shell {

/// Activates a window of the program after a dialog has closed: the modal dialog below it,
/// otherwise the window that opened it, such as the preview, otherwise the main window. Without a
/// window manager no window would be active then, and keyboard input would be lost.
///
/// Install it as an event filter on the application.
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
