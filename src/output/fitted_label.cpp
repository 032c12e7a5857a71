#include "output/fitted_label.h"

#include "platform/controls/twips.h"

#include <QPainter>

namespace output {

namespace {

/// One pixel, in twips.
constexpr double underlineWidth = controls::twipsPerPixel;

report::Align alignOf(Qt::Alignment alignment)
{
    if (alignment.testFlag(Qt::AlignHCenter))
        return report::Align::Centre;
    return alignment.testFlag(Qt::AlignRight) ? report::Align::Right : report::Align::Left;
}

} // namespace

report::ShapedText FittedLabel::shapedText() const
{
    const double width = this->width() * controls::twipsPerPixel;
    const report::TextFrame frame{.width = width,
                                  .height = double(height() * controls::twipsPerPixel),
                                  .free = {0, width},
                                  .align = alignOf(alignment()),
                                  .rightToLeft = isRightToLeft()};
    const QFont twips = report::twipFont(font().family(), font().pointSizeF(), font().bold());
    return report::shapedText(frame, text(), twips);
}

void FittedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.scale(1.0 / controls::twipsPerPixel, 1.0 / controls::twipsPerPixel);
    painter.setPen(QPen(palette().color(foregroundRole()), underlineWidth));
    const report::ShapedText shaped = shapedText();
    report::drawGlyphs(shaped, {}, painter);
    if (font().underline()) {
        for (const QLineF& line : report::underlines(shaped, {}))
            painter.drawLine(line);
    }
}

} // namespace output
