#pragma once

#include <QScrollArea>

class QPushButton;

namespace controls {

/// A scroll area for a part of a form, which scrolls if the form is too small for its contents. The
/// scroll area has no border and is not a tab stop itself. The contents fill the scroll area. The
/// control that has the focus is always scrolled into view.
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

/// Returns the size `wanted` of a window, but at most the available size `room`. If the contents
/// must scroll in one direction, the size in the other direction includes the width of a scroll
/// bar.
QSize fittedSize(QSize wanted, QSize room);

/// Fits a window of fixed size with freely placed controls into the available room. If the window
/// is larger than the room, its controls move into a scroll area, its buttons move to a row below
/// the scroll area, and the window becomes smaller. Returns the widget that contains the controls.
/// This widget is the window itself if the window fits. Must be called before the window is shown.
QWidget* fitIntoRoom(QWidget& window, QSize room, const QList<QPushButton*>& buttons);

} // namespace controls
