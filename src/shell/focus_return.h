#pragma once

#include <QObject>

namespace shell {

/// Activates a window of the program after a dialog has closed. Without a window manager no window
/// would be active then, and keyboard input would be lost.
///
/// Install it as an event filter on the application.
class FocusReturn : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void activateAWindow();
};

} // namespace shell
