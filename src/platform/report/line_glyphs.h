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
    /// If the run is a single glyph that is drawn as its mirror image: the x position of the mirror
    /// image's right edge, in the coordinates of the layout. Empty for any other run.
    std::optional<double> mirroredFrom;
};

/// Returns the glyphs of a one-line layout as pieces, in an order that lets programs extract the
/// text from a PDF.
///
/// The pieces are sorted from left to right, because such programs build words from adjacent
/// glyphs. The function solves two problems with brackets:
/// - In right-to-left text, a font draws "(" with the glyph of ")". A PDF identifies a character by
///   its glyph. Therefore "(" gets its own glyph, drawn as a mirror image.
/// - A program may assign a bracket between a right-to-left word and a left-to-right word to the
///   wrong word. An invisible direction mark beside the bracket prevents this error.
///
/// Brackets around a right-to-left word in left-to-right text are handled like brackets in
/// right-to-left text, because programs extract these brackets together with the word.
std::vector<GlyphPiece> lineGlyphs(const QTextLayout& layout);

} // namespace report
