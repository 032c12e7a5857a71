#pragma once

#include <QObject>

class QMdiSubWindow;

namespace controls {

/// Makes screen readers announce the control with the focus when Tab passes the last control of a
/// child window. The child window gets the focus for a moment and passes it to its first control.
/// Qt then announces the child window last. Therefore this class announces the control again. The
/// child window owns this object.
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
