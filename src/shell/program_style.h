#pragma once

#include <QProxyStyle>

namespace shell {

/// The style of all windows, with a picture of its own for the button that stands in a toolbar for
/// what has no room in it. The toolkit makes its picture with every toolbar and reads it from a
/// file by way of every image plugin of the machine, which took a fifth of the program's start.
/// Headers, scroll bars and lists are drawn in the program's palette: the toolkit keeps pictures of
/// them by the palette and never forgets a name, so each form whose widgets have palettes of their
/// own would leave some behind.
class ProgramStyle : public QProxyStyle
{
public:
    ProgramStyle();
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

} // namespace shell
