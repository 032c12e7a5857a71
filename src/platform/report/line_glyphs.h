#pragma once

#include <QGlyphRun>

#include <optional>
#include <vector>

class QTextLayout;

namespace report {

/// Glyphs that are drawn with one call.
struct GlyphPiece
{
    QGlyphRun run;
    /// Set where the piece is a single glyph drawn as its mirror image, from this x to the left.
    std::optional<double> mirroredFrom;
};

/// The glyphs of a layout of one line, ordered for programs that read the text back from a PDF.
///
/// The pieces come in the order in which they stand on paper, from the left, because such programs
/// put words together from neighbours. Fonts draw "(" in right-to-left text with the glyph of ")",
/// and a PDF tells a character by its glyph: a mirrored bracket is therefore drawn as the mirror
/// image of its own glyph. In a text with brackets, invisible marks of direction bound the parts
/// that run from left to right: one at the left, so that the brackets that follow in right-to-left
/// text are not counted with the part, and one behind a bracket at the right, so that it is.
std::vector<GlyphPiece> lineGlyphs(const QTextLayout& layout);

} // namespace report
