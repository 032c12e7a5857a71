#pragma once

#include <QScrollArea>

class QPushButton;

namespace controls {

/// A part of a form that scrolls if the form is too small for its contents. It has no frame and is
/// not a tab stop itself. The contents fill the area. The control that has the focus is always
/// scrolled into view.
class ScrollPart : public QScrollArea
{
    Q_OBJECT

public:
    ScrollPart(QWidget* contents, QWidget* parent);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void bringFocusIntoView(QWidget* focused);
};

/// Returns the part of the wanted size that the room allows. If one direction has to scroll, the
/// size includes the scroll bar in the other direction.
QSize fittedSize(QSize wanted, QSize room);

/// Fits a window of fixed size with freely placed controls into the room. If the window is larger,
/// its controls move into a scroll area, the buttons move to a row below it, and the window becomes
/// smaller. Returns the widget that holds the controls: the window itself if it fits. Call this
/// before the window is shown.
QWidget* fitIntoRoom(QWidget& window, QSize room, const QList<QPushButton*>& buttons);

} // namespace controls
