#pragma once

#include <QObject>

class QWidget;

namespace controls {

/// Keeps a top-level window inside its screen when it leaves the maximised state. A window that
/// would be as large as the screen, or whose title bar would be outside it, gets four fifths of the
/// screen and moves to its middle. The object belongs to the window.
class RestoredSize : public QObject
{
    Q_OBJECT

public:
    explicit RestoredSize(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keepInside();

    QWidget& window_;
};

} // namespace controls
