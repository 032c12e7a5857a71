#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>

class QWidget;

namespace controls {

/// Keeps a top-level window inside its screen when it leaves the maximised state. A window that
/// would stay as large as it was gets four fifths of the screen, and one that is partly outside the
/// screen moves to its middle. Any other size that is larger than the screen is left as it is,
/// because the user or a program chose it. The object belongs to the window.
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
