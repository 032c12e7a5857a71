#pragma once

#include <QObject>
#include <QPoint>

class QMdiSubWindow;
class QWidget;

namespace controls {

/// Keeps a child window at its distance from the edge where reading starts, and inside the frame,
/// while the frame changes its size. The toolkit alone holds on to the left edge whatever the
/// direction. Belongs to the window.
class ReadingAnchor : public QObject
{
public:
    ReadingAnchor(QMdiSubWindow& window, QWidget& viewport);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool holdsNormalPlace() const;
    void place();
    void remember();
    void returnToPlace(Qt::WindowStates oldState);

    QMdiSubWindow& window_;
    QWidget& viewport_;
    QPoint start_; ///< Distance of the window's corner from the frame's reading start.
    bool placing_ = false;
};

} // namespace controls
