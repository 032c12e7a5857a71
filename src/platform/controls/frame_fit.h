#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QRect>

class QPushButton;

namespace controls {

/// Fits a child form of fixed size into the MDI area, now and whenever the MDI area is resized.
/// While the MDI area is too small, the form scrolls, and its buttons are in a row below the scroll
/// area (see fitIntoRoom). The form owns this object.
class FrameFit : public QObject
{
public:
    FrameFit(QWidget& form, const QList<QPushButton*>& buttons);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();
    void scroll(const QSize& room);
    void stopScrolling();

    QWidget& form_;
    const QSize full_;
    QHash<QPushButton*, QRect> places_; ///< Of the buttons, while the form does not scroll.
    QList<QPushButton*> buttons_;
    QWidget* contents_ = nullptr; ///< Holds the controls while the form scrolls.
};

} // namespace controls
