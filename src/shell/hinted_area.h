#pragma once

#include <QMdiArea>

namespace shell {

/// The area of the main window that contains the child windows. While no child window is open, the
/// area shows a hint how to open one.
class HintedArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit HintedArea(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace shell
