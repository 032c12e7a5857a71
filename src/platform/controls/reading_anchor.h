#pragma once

#include <QObject>
#include <QPoint>

class QMdiSubWindow;
class QWidget;

namespace controls {

/// Keeps a child window at a constant distance from the edge where reading starts, and inside the
/// frame, when the frame is resized. Qt itself anchors windows at the left edge, even in a
/// right-to-left layout. The child window owns this object.
class ReadingAnchor : public QObject
{
    Q_OBJECT

public:
    ReadingAnchor(QMdiSubWindow& window, QWidget& viewport);

    /// Moves the window to its place in the frame, for example after its size has changed.
    void place();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool holdsNormalPlace() const;
    void remember();
    void returnToPlace(Qt::WindowStates oldState);

    QMdiSubWindow& window_;
    QWidget& viewport_;
    /// Distance of the window's corner from the frame's corner where reading starts, in pixels.
    QPoint start_;
    bool placing_ = false;
};

} // namespace controls
