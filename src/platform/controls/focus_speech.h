#pragma once

#include <QObject>

class QMdiSubWindow;

namespace controls {

/// Tells screen readers again which control has the focus after a child window of the frame had it
/// for a moment. When Tab has gone round, the window gets the focus and passes it on to its first
/// control at once, but the toolkit announces the window last. The object belongs to the window.
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
