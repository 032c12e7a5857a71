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

/// The box that a text is set into, in twips.
struct TextFrame
{
    double width;
    double height;
    Extent free; ///< What of the width the text may take.
    Align align;
    bool rightToLeft;

    double available() const { return usableWidth(free, width, align); }
    /// Where a text of the width begins, in twips from the left edge of the box.
    double leftOf(double textWidth) const;
};

/// One line of a text: its glyphs, drawn at `corner`, in twips from the corner of the box.
struct ShapedLine
{
    QString text; ///< What of the text stands on this line, with its direction marks.
    std::vector<GlyphPiece> glyphs;
    QPointF corner;
    double width;     ///< As it is drawn.
    double underline; ///< How far below `corner` the underline lies, where there is one.
};

/// All lines are condensed and made smaller alike.
struct ShapedText
{
    std::vector<ShapedLine> lines;
    double naturalWidth = 0; ///< Of the widest line.
    Fit fit;
    bool rightToLeft = false; ///< The paragraph direction.
};

/// The font for a type size in points, measured in twips and unhinted, so that widths agree on
/// every device.
QFont twipFont(const QString& family, double points, bool bold);

double textWidth(const QString& text, bool rightToLeft, const QFont& font);

/// Sets a text into a frame, in the vertical middle of it. It takes as many lines as the frame's
/// height holds, one at the least. A text that does not fit is condensed, then set smaller (see
/// fitted). One that is still too wide is cut after a whole character; its last character is then
/// an ellipsis at its logical end.
ShapedText shapedText(const TextFrame& frame, const QString& text, const QFont& font);

/// Draws the glyphs of all lines. The painter is scaled to twips; `corner` is the box's.
void drawGlyphs(const ShapedText& text, QPointF corner, QPainter& painter);

/// The underlines of all lines.
std::vector<QLineF> underlines(const ShapedText& text, QPointF corner);

} // namespace report
