#pragma once

#include <QObject>

class QMdiSubWindow;

namespace controls {

/// Makes screen readers announce the control that gets the focus after Tab on the last control of a
/// child window. The focus then moves to the child window and from there to its first control. Qt
/// announces the child window after the control. Therefore this class announces the control again.
/// The child window owns this object.
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
