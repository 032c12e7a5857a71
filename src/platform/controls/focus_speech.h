#pragma once

#include <QObject>

class QMdiSubWindow;

namespace controls {

/// Announces the control with the focus to screen readers again after a child window had the focus
/// for a moment. When Tab passes the last control of a child window, the window gets the focus and
/// immediately passes it to its first control. Qt announces the window last, although the control
/// has the focus. The child window owns this object.
class FocusSpeech : public QObject
{
    Q_OBJECT

public:
    explicit FocusSpeech(QMdiSubWindow& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void announceFocus();
};

} // namespace controls
