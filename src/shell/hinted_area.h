#pragma once

#include <QMdiArea>

namespace shell {

/// The frame of the child windows. While no child window is open, it says how to open one.
class HintedArea : public QMdiArea
{
    Q_OBJECT

public:
    explicit HintedArea(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace shell
