#pragma once

#include "platform/report/design.h"
#include "platform/report/fit.h"
#include "platform/report/free_space.h"
#include "platform/report/line_glyphs.h"

#include <QFont>
#include <QLineF>
#include <QPointF>
#include <QString>

#include <vector>

class QPainter;

namespace report {

/// The rectangle, in twips, in which a text is laid out.
struct TextFrame
{
    double width;
    double height;
    Extent free; ///< The part of the width that the text may occupy.
    Align align;
    bool rightToLeft;

    double available() const { return usableWidth(free, width, align); }
    /// Returns the position of the left end of a text with this width, in twips from the left edge
    /// of the text's rectangle.
    double leftOf(double textWidth) const;
};

/// One line of a shaped text. Its glyphs are drawn at the position `corner`, in twips from the top
/// left corner of the text's rectangle.
struct ShapedLine
{
    QString text; ///< The text of this line with its direction marks.
    std::vector<GlyphPiece> glyphs;
    QPointF corner;
    double width;     ///< Width as drawn, in twips.
    double underline; ///< Distance of the underline below `corner`, in twips.
};

/// A text that has been shaped into lines. All lines have the same condensing and the same size
/// reduction.
struct ShapedText
{
    std::vector<ShapedLine> lines;
    double naturalWidth = 0; ///< Full-size width of the widest line, in twips.
    Fit fit;
    bool rightToLeft = false; ///< Paragraph direction.
};

/// Returns a font of this family and size in points. Its metrics are in twips and unhinted, so that
/// text widths are equal on every device.
QFont twipFont(const QString& family, double points, bool bold);

double textWidth(const QString& text, bool rightToLeft, const QFont& font);

/// Lays out a text in a rectangle and centres it vertically. The text uses as many lines as fit
/// into the height of the rectangle, but at least one. A text that does not fit is condensed and
/// then reduced in size (see fitted). If the text is still too wide, it is truncated after a whole
/// character and ends with an ellipsis.
ShapedText shapedText(const TextFrame& frame, const QString& text, const QFont& font);

/// Draws the glyphs of all lines. The painter's unit must be the twip. `corner` is the top left
/// corner of the text's rectangle.
void drawGlyphs(const ShapedText& text, QPointF corner, QPainter& painter);

/// Returns the underlines of all lines.
std::vector<QLineF> underlines(const ShapedText& text, QPointF corner);

} // namespace report
