#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>

class QWidget;

namespace controls {

/// Corrects the size and position of a top-level window that leaves the maximised state:
/// - A window that still has its maximised size is reduced to four fifths of the screen.
/// - A window that is smaller than the screen but partly outside it moves to the middle.
/// - A window with any other size stays unchanged, even if it is larger than the screen, because
///   the user or a program chose this size.
///
/// The window owns this object.
class RestoredSize : public QObject
{
    Q_OBJECT

public:
    explicit RestoredSize(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepInside();

    QWidget& window_;
    QTimer settled_;  ///< Runs until the window system has set the restored geometry.
    QSize maximised_; ///< The size at the end of the maximised state.
};

} // namespace controls
