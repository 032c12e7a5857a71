#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>

class QWidget;

namespace controls {

/// Keeps a top-level window inside its screen when the window leaves the maximised state. A window
/// that would keep its maximised size is reduced to four fifths of the screen. A window that is
/// partly outside the screen moves to the middle of the screen. Any other size that is larger than
/// the screen stays unchanged, because the user or a program chose it. The window owns this object.
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
