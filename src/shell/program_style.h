#pragma once

#include <QProxyStyle>

namespace shell {

/// The style Fusion with seven changes. First, the style itself draws the icon of the extension
/// button, which shows the hidden buttons of a toolbar. Qt requests that icon for every toolbar and
/// loads every installed image plugin to read the icon, which takes a fifth of the program's start
/// time. Second, headers, scroll bars and combo boxes are drawn in the application's palette,
/// because Qt caches separate pixmaps for each palette. Third, a button with the focus has a focus
/// frame even if the focus was not set by a Tab key. Fourth, push buttons have more space around
/// their texts. Fifth, the lines of a grid and the frames of lists, grids and panels have an even
/// width at every scale of the screen, and a list or grid with the focus has a coloured frame.
/// Sixth, a disabled combo box is white, as other disabled fields are. Seventh, the text of a combo
/// box reads in the direction of the box, and the buttons of dialogs have no icons.
class ProgramStyle : public QProxyStyle
{
public:
    ProgramStyle();
    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

} // namespace shell
