#include "platform/report/line_glyphs.h"

#include "platform/runtime/direction_marks.h"

#include <QRawFont>
#include <QTextLayout>

#include <algorithm>

namespace report {

using namespace Qt::StringLiterals;

namespace {

/// Pairs of brackets. The counterpart of the bracket at index i is at index i ^ 1.
const QString brackets = u"()[]{}<>"_s;

struct Glyph
{
    QRawFont font;
    quint32 index;
    QPointF position;
    bool isRightToLeft;
    std::optional<double> mirroredFrom = {};
};

bool hasBrackets(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return brackets.contains(c); });
}

/// Returns true if the text contains letters. Only the brackets of such a text need special
/// handling. Programs that extract text from a PDF keep the brackets of any other text in the right
/// order.
bool hasLetters(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isLetter(); });
}

std::vector<Glyph> glyphsOf(const QTextLayout& layout)
{
    std::vector<Glyph> glyphs;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        for (qsizetype i = 0; i < indexes.size(); ++i)
            glyphs.push_back({run.rawFont(), indexes[i], positions[i], run.isRightToLeft()});
    }
    std::stable_sort(glyphs.begin(), glyphs.end(), [](const Glyph& a, const Glyph& b) {
        return a.position.x() < b.position.x();
    });
    return glyphs;
}

/// Returns the index in `brackets` of the bracket that the glyph shows, or -1 if the glyph is not a
/// bracket.
qsizetype bracketOf(const Glyph& glyph)
{
    return glyph.font.glyphIndexesForString(brackets).indexOf(glyph.index);
}

/// Marks the brackets around right-to-left words in left-to-right text as right-to-left, because
/// programs that extract text from a PDF treat such brackets as part of the words. The mark does
/// not change how the brackets look.
void joinBracketsToTheirWords(std::vector<Glyph>& glyphs)
{
    for (auto open = glyphs.begin(); open != glyphs.end(); ++open) {
        const qsizetype bracket = bracketOf(*open);
        const auto close = std::find_if(std::next(open), glyphs.end(),
                                        [](const Glyph& each) { return !each.isRightToLeft; });
        if (open->isRightToLeft || bracket < 0 || bracket % 2 != 0 || close == glyphs.end() ||
            close == std::next(open) || bracketOf(*close) != bracket + 1)
            continue;
        open->isRightToLeft = true;
        close->isRightToLeft = true;
    }
}

double rightEnd(const Glyph& glyph)
{
    return glyph.position.x() + glyph.font.advancesForGlyphIndexes({glyph.index}).value(0).x();
}

void mirrorBracket(Glyph& glyph)
{
    const qsizetype bracket = bracketOf(glyph);
    if (bracket < 0)
        return;
    glyph.mirroredFrom = rightEnd(glyph);
    glyph.index = glyph.font.glyphIndexesForString(brackets).at(bracket ^ 1);
}

/// Adds an invisible direction mark at the position `x`, in the font of the glyph `beside`. Adds
/// nothing if that font does not contain the mark.
void addMark(std::vector<Glyph>& glyphs, const Glyph& beside, QChar mark, double x)
{
    const quint32 index = beside.font.glyphIndexesForString(QString(mark)).value(0);
    if (index != 0)
        glyphs.push_back({beside.font, index, {x, beside.position.y()}, false});
}

std::vector<Glyph> withBracketsInOrder(const std::vector<Glyph>& glyphs)
{
    std::vector<Glyph> ordered;
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        Glyph glyph = glyphs[i];
        if (glyph.isRightToLeft) {
            mirrorBracket(glyph);
            ordered.push_back(glyph);
            continue;
        }
        const bool begins = i > 0 && glyphs[i - 1].isRightToLeft;
        const bool ends = i + 1 == glyphs.size() || glyphs[i + 1].isRightToLeft;
        if (begins)
            addMark(ordered, glyph, runtime::rightToLeftMark, glyph.position.x());
        ordered.push_back(glyph);
        if (ends && bracketOf(glyph) >= 0)
            addMark(ordered, glyph, runtime::leftToRightMark, rightEnd(glyph));
    }
    return ordered;
}

bool areDrawnTogether(const Glyph& a, const Glyph& b)
{
    return a.font == b.font && !a.mirroredFrom && !b.mirroredFrom;
}

template <typename Iterator>
GlyphPiece piece(Iterator first, Iterator end)
{
    QList<quint32> indexes;
    QList<QPointF> positions;
    for (auto each = first; each != end; ++each) {
        indexes.append(each->index);
        positions.append(each->mirroredFrom ? QPointF(0, each->position.y()) : each->position);
    }
    GlyphPiece piece;
    piece.run.setRawFont(first->font);
    piece.run.setGlyphIndexes(indexes);
    piece.run.setPositions(positions);
    piece.mirroredFrom = first->mirroredFrom;
    return piece;
}

} // namespace

std::vector<GlyphPiece> lineGlyphs(const QTextLayout& layout)
{
    std::vector<Glyph> glyphs = glyphsOf(layout);
    if (hasBrackets(layout.text()) && hasLetters(layout.text())) {
        joinBracketsToTheirWords(glyphs);
        glyphs = withBracketsInOrder(glyphs);
    }
    std::vector<GlyphPiece> pieces;
    for (auto first = glyphs.begin(); first != glyphs.end();) {
        const auto end = std::find_if(std::next(first), glyphs.end(), [&](const Glyph& each) {
            return !areDrawnTogether(*first, each);
        });
        pieces.push_back(piece(first, end));
        first = end;
    }
    return pieces;
}

} // namespace report
