#include "platform/report/page_ink.h"

#include "platform/runtime/twips.h"

#include <QPainter>

namespace report {

namespace {

/// The width of a printed line in twips. It equals one pixel of a screen with 96 dots per inch.
constexpr double lineWidth = runtime::twipsPerPixel;

void drawPicture(const QRectF& place, const QImage& picture, QPainter& painter)
{
    if (picture.isNull())
        return;
    QRectF fitted(QPointF(), QSizeF(picture.size()).scaled(place.size(), Qt::KeepAspectRatio));
    fitted.moveCenter(place.center());
    painter.drawImage(fitted, picture);
}

} // namespace

void PageInk::draw(const Page& page, QPainter& painter)
{
    painter.save();
    painter.setRenderHints(QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(QPen(Qt::black, lineWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    lines_.clear();
    borders_.clear();
    for (const Band& band : page.bands) {
        for (const PrintedControl& printed : band.controls)
            drawControl(printed, painter);
    }
    painter.drawLines(lines_);
    painter.drawRects(borders_);
    painter.restore();
}

void PageInk::drawControl(const PrintedControl& printed, QPainter& painter)
{
    const ControlDesign& design = printed.control->design();
    const QRectF place(printed.corner, QSizeF(design.width, design.height));
    switch (design.kind) {
    case Kind::Label:
    case Kind::Field:
        drawText(printed, painter);
        break;
    case Kind::Line:
        lines_.append(QLineF(place.topLeft(), place.bottomRight()));
        break;
    case Kind::Image:
        drawPicture(place, printed.control->Picture(), painter);
        break;
    }
    if ((design.style & Style::Boxed) != 0)
        borders_.append(place);
}

void PageInk::drawText(const PrintedControl& printed, QPainter& painter)
{
    if (printed.text.isEmpty())
        return;
    const ControlDesign& design = printed.control->design();
    const ShapedText& text = shaper_.shaped(design, printed.text);
    drawGlyphs(text, printed.corner, painter);
    // Underlines are drawn as separate lines, because Qt draws the underlines of glyph runs at a
    // wrong position if the painter is scaled.
    if ((design.style & Style::Underlined) != 0) {
        for (const QLineF& underline : underlines(text, printed.corner))
            lines_.append(underline);
    }
}

} // namespace report
