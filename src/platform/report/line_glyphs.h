#pragma once

#include <QGlyphRun>

#include <optional>
#include <vector>

class QTextLayout;

namespace report {

/// Glyphs that one call draws.
struct GlyphPiece
{
    QGlyphRun run;
    /// Set if the piece is a single glyph that is drawn as its mirror image. The mirror image
    /// extends to the left from this x position.
    std::optional<double> mirroredFrom;
};

/// Returns the glyph pieces of a one-line layout in an order that lets programs extract the text
/// from a PDF.
///
/// The pieces are sorted from left to right, because such programs build words from adjacent
/// glyphs. In right-to-left text, fonts draw "(" with the glyph of ")", but a PDF identifies a
/// character by its glyph. A mirrored bracket is therefore drawn as the mirror image of its own
/// glyph. In a text with brackets, invisible direction marks delimit the left-to-right parts. A
/// mark at the left end keeps the following brackets of right-to-left text out of the part. A mark
/// after a bracket at the right end keeps that bracket in the part.
std::vector<GlyphPiece> lineGlyphs(const QTextLayout& layout);

} // namespace report
