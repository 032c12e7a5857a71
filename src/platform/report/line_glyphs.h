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
    /// If the piece is a single glyph that is drawn as its mirror image, the x position of the
    /// right edge of the image. Otherwise empty.
    std::optional<double> mirroredFrom;
};

/// Returns the glyph pieces of a one-line layout in an order that lets programs extract the text
/// from a PDF.
///
/// The pieces are sorted from left to right, because such programs build words from adjacent
/// glyphs. Two problems with brackets are solved here. First, in right-to-left text a font draws
/// "(" with the glyph of ")", and a PDF identifies a character by its glyph; such a bracket is
/// therefore drawn as the mirror image of its own glyph. Second, a program may assign a bracket
/// between a right-to-left and a left-to-right word to the wrong word; an invisible direction mark
/// between them prevents this. Brackets around a right-to-left word in left-to-right text are
/// handled like those in right-to-left text, because such programs read them with the word.
std::vector<GlyphPiece> lineGlyphs(const QTextLayout& layout);

} // namespace report
