#pragma once

#include <QObject>
#include <QPoint>

class QMdiSubWindow;
class QWidget;

namespace controls {

/// Keeps a child window inside the MDI area when the MDI area is resized. The distance between the
/// window and the edge where reading starts stays constant. Qt itself keeps the distance to the
/// left edge, even in a right-to-left layout. The child window owns this object.
class ReadingAnchor : public QObject
{
    Q_OBJECT

public:
    ReadingAnchor(QMdiSubWindow& window, QWidget& viewport);

    /// Moves the window to its stored position in the MDI area, for example after the size of the
    /// window has changed.
    void place();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool holdsNormalPlace() const;
    void remember();
    void returnToPlace(Qt::WindowStates oldState);

    QMdiSubWindow& window_;
    QWidget& viewport_;
    /// The position of the window in the MDI area, in pixels: the horizontal distance between the
    /// edges at which reading starts (right in Hebrew), and the vertical distance between the upper
    /// edges.
    QPoint start_;
    bool placing_ = false;
};

} // namespace controls
