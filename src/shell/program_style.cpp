#include "shell/program_style.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QStyleOption>
#include <QTableView>
#include <QWidget>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

/// The width and height that are added to the usual size of a push button, in device-independent
/// pixels.
constexpr QSize roomAroundCaption(12, 2);

constexpr int side = 16; // Side of the icon in pixels, and of the grid that it is drawn on.

/// Draws the icon of a toolbar's extension button: two arrowheads that point towards the hidden
/// part of the toolbar.
QIcon extension(Qt::Orientation orientation, Qt::LayoutDirection direction)
{
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.translate(side / 2.0, side / 2.0);
    if (orientation == Qt::Vertical)
        painter.rotate(90);
    else if (direction == Qt::RightToLeft)
        painter.rotate(180);
    for (const double left : {-4.0, 1.0})
        painter.drawPolyline(QPolygonF{{left, -4}, {left + 4, 0}, {left, 4}});
    return QIcon(picture);
}

template <typename Option>
Option inPalette(const QPalette& palette, const Option& option)
{
    Option same = option;
    same.palette = palette;
    same.palette.setCurrentColorGroup(option.palette.currentColorGroup());
    return same;
}

template <typename Option>
Option withFocusShown(const Option& option)
{
    Option shown = option;
    if (shown.state.testFlag(QStyle::State_HasFocus))
        shown.state |= QStyle::State_KeyboardFocusChange;
    return shown;
}

/// Draws the focus frame around the whole tool button, because the style Fusion draws no focus
/// frame around a button with a menu.
void drawToolButtonFocus(const QStyleOptionToolButton& button, QPainter& painter)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(button.palette.color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(button.rect).adjusted(1, 1, -1, -1), 2, 2);
    painter.restore();
}

/// Returns the colour of the frame of a list, grid or panel. A list or grid with the focus has a
/// coloured frame, because the style Fusion shows the focus only in the current row, and an empty
/// grid has no current row.
QColor frameColour(const QStyleOption& frame, const QWidget* widget)
{
    if (frame.state.testFlag(QStyle::State_HasFocus) &&
        qobject_cast<const QAbstractItemView*>(widget) != nullptr)
        return frame.palette.color(QPalette::Highlight);
    constexpr int outline = 140; // As in Fusion, in percent.
    constexpr int lighter = 108;
    return frame.palette.color(QPalette::Window).darker(outline).lighter(lighter);
}

/// Draws lines that cover whole device pixels. At a screen scale of 150 %, the position of a line
/// may be between two pixels. A line that is drawn with a pen is then wider than other lines, or a
/// neighbouring element covers it.
class EvenLines
{
public:
    EvenLines(QPainter& painter, const QColor& colour)
        : painter_(painter), colour_(colour), toDevice_(painter.deviceTransform()),
          width_(std::max(1.0, std::floor(toDevice_.m11() + noise)))
    {
    }

    /// Draws a frame just inside the rectangle.
    void drawFrame(const QRect& place) const
    {
        const QRectF pixels = pixelsIn(place);
        fill({pixels.left(), pixels.top(), pixels.width(), width_});
        drawLeft(place);
        drawBottom(place);
        drawRight(place);
    }

    /// The functions drawLeft, drawRight and drawBottom each draw one line just inside an edge of
    /// the rectangle.
    void drawLeft(const QRect& place) const
    {
        const QRectF pixels = pixelsIn(place);
        fill({pixels.left(), pixels.top(), width_, pixels.height()});
    }
    void drawRight(const QRect& place) const
    {
        const QRectF pixels = pixelsIn(place);
        fill({pixels.right() - width_, pixels.top(), width_, pixels.height()});
    }
    void drawBottom(const QRect& place) const
    {
        const QRectF pixels = pixelsIn(place);
        fill({pixels.left(), pixels.bottom() - width_, pixels.width(), width_});
    }

private:
    /// Returns the whole device pixels that the rectangle contains.
    QRectF pixelsIn(const QRect& place) const
    {
        const QRectF exact = toDevice_.mapRect(QRectF(place));
        return {QPointF(std::ceil(exact.left() - noise), std::ceil(exact.top() - noise)),
                QPointF(std::floor(exact.right() + noise), std::floor(exact.bottom() + noise))};
    }
    void fill(const QRectF& pixels) const
    {
        painter_.fillRect(toDevice_.inverted().mapRect(pixels), colour_);
    }

    static constexpr double noise = 1e-6;
    QPainter& painter_;
    QColor colour_;
    QTransform toDevice_;
    double width_;
};

/// Draws the grid lines at the lower edge and at the trailing edge of a cell. Qt leaves one
/// device-independent pixel between cells for these lines.
void drawGridLines(const QStyleOptionViewItem& cell, const QTableView& grid, QPainter& painter)
{
    const bool isRightToLeft = grid.layoutDirection() == Qt::RightToLeft;
    const QRect place = cell.rect.adjusted(isRightToLeft ? -1 : 0, 0, isRightToLeft ? 0 : 1, 1);
    const int colour = grid.style()->styleHint(QStyle::SH_Table_GridLineColor, &cell, &grid);
    const EvenLines lines(painter, QColor::fromRgb(static_cast<QRgb>(colour)));
    lines.drawBottom(place);
    if (isRightToLeft)
        lines.drawLeft(place);
    else
        lines.drawRight(place);
}

/// Returns the palette of disabled combo boxes. All disabled combo boxes share one palette, because
/// Qt caches separate pixmaps for each palette.
const QPalette& disabledComboPalette()
{
    static const QPalette palette = [] {
        QPalette made = QGuiApplication::palette();
        made.setBrush(QPalette::Disabled, QPalette::Button,
                      made.brush(QPalette::Disabled, QPalette::Base));
        return made;
    }();
    return palette;
}

/// Returns true if the widget is the popup list of a combo box. Its frame is drawn like the frame
/// of a menu.
bool isListOfCombo(const QWidget* widget)
{
    return widget != nullptr && widget->inherits("QComboBoxPrivateContainer");
}

} // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(u"fusion"_s) {}

void ProgramStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    // The grid draws no lines itself, because drawGridLines draws them.
    if (auto* grid = qobject_cast<QTableView*>(widget))
        grid->setGridStyle(Qt::NoPen);
}

QIcon ProgramStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                                 const QWidget* widget) const
{
    const Qt::LayoutDirection direction =
        widget == nullptr ? QGuiApplication::layoutDirection() : widget->layoutDirection();
    switch (which) {
    case SP_ToolBarHorizontalExtensionButton:
        return extension(Qt::Horizontal, direction);
    case SP_ToolBarVerticalExtensionButton:
        return extension(Qt::Vertical, direction);
    default:
        return QProxyStyle::standardIcon(which, option, widget);
    }
}

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& contents, const QWidget* widget) const
{
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    return type == CT_PushButton ? size + roomAroundCaption : size;
}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* more) const
{
    // Dialog buttons have no icons, because with an icon the caption of a button in the file dialog
    // touches the button's edge.
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, more);
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const
{
    if (const auto* frame = qstyleoption_cast<const QStyleOptionFocusRect*>(option);
        frame != nullptr && element == PE_FrameFocusRect) {
        const QStyleOptionFocusRect shown = withFocusShown(*frame);
        QProxyStyle::drawPrimitive(element, &shown, painter, widget);
        return;
    }
    if (element == PE_Frame && !isListOfCombo(widget))
        EvenLines(*painter, frameColour(*option, widget)).drawFrame(option->rect);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const
{
    const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_HeaderSection && header != nullptr) {
        const QStyleOptionHeader same = inPalette(QGuiApplication::palette(), *header);
        QProxyStyle::drawControl(element, &same, painter, widget);
    } else if (element == CE_ComboBoxLabel) {
        // Draws the text of a combo box in the layout direction of the box instead of the program's
        // direction, so that a path looks the same in the box and in its list.
        const Qt::LayoutDirection former = painter->layoutDirection();
        painter->setLayoutDirection(option->direction);
        QProxyStyle::drawControl(element, option, painter, widget);
        painter->setLayoutDirection(former);
    } else if (button != nullptr) {
        const QStyleOptionButton shown = withFocusShown(*button);
        QProxyStyle::drawControl(element, &shown, painter, widget);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
        const auto* cell = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        const auto* grid = qobject_cast<const QTableView*>(widget);
        if (cell != nullptr && grid != nullptr)
            drawGridLines(*cell, *grid, *painter);
    }
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const
{
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        bar != nullptr && control == CC_ScrollBar) {
        const QStyleOptionSlider same = inPalette(QGuiApplication::palette(), *bar);
        QProxyStyle::drawComplexControl(control, &same, painter, widget);
    } else if (const auto* list = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
        const QPalette palette = list->state.testFlag(State_Enabled) ? QGuiApplication::palette()
                                                                     : disabledComboPalette();
        const QStyleOptionComboBox same = withFocusShown(inPalette(palette, *list));
        QProxyStyle::drawComplexControl(control, &same, painter, widget);
    } else if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option)) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (button->state.testFlag(State_HasFocus))
            drawToolButtonFocus(*button, *painter);
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

} // namespace shell
