#include "platform/report/shaped_text.h"

#include "platform/report/report_text.h"
#include "platform/runtime/direction_marks.h"
#include "platform/runtime/twips.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <memory>
#include <numeric>

namespace report {

using namespace Qt::StringLiterals;

namespace {

/// The line width, in twips, for a text that is not wrapped. It is greater than the width of any
/// text. It is less than Qt's own maximum width, because QTextLine gives that value a special
/// meaning.
constexpr double endlessWidth = 1 << 20;
constexpr QChar ellipsis(0x2026);

using Layout = std::unique_ptr<QTextLayout>;

Layout laidOut(const DisplayText& display, const QFont& font, double width = endlessWidth)
{
    auto layout = std::make_unique<QTextLayout>(display.text, font);
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(display.rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(width == endlessWidth ? QTextOption::NoWrap : QTextOption::WordWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout->setTextOption(option);
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine())
        line.setLineWidth(width);
    layout->endLayout();
    return layout;
}

double naturalWidth(const QTextLayout& layout)
{
    return layout.lineCount() == 0 ? 0 : layout.lineAt(0).naturalTextWidth();
}

bool hasDirection(const QString& text, bool rightToLeft)
{
    return std::any_of(text.cbegin(), text.cend(), [rightToLeft](QChar c) {
        const QChar::Direction direction = c.direction();
        return rightToLeft ? direction == QChar::DirR || direction == QChar::DirAL
                           : direction == QChar::DirL;
    });
}

/// Appends an ellipsis to a truncated text. The ellipsis must follow the last letter in reading
/// order. If all letters run against the paragraph's direction, such as Latin letters in a Hebrew
/// paragraph, Qt would draw the ellipsis beside the first letter. A direction mark after the
/// ellipsis prevents this.
QString withEllipsis(QString beginning, bool rightToLeft)
{
    while (beginning.endsWith(u' '))
        beginning.chop(1);
    const bool runsAgainst =
        hasDirection(beginning, !rightToLeft) && !hasDirection(beginning, rightToLeft);
    beginning += ellipsis;
    if (runsAgainst)
        beginning += rightToLeft ? runtime::leftToRightMark : runtime::rightToLeftMark;
    return beginning;
}

/// Returns the layout of the longest beginning of the text that fits the width together with an
/// ellipsis. The beginning ends after a whole character and contains at least one character.
Layout cut(const DisplayText& display, const QFont& font, double width)
{
    std::vector<qsizetype> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, display.text);
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary())
        ends.push_back(end);
    const auto beginningUpTo = [&](qsizetype end) {
        const QString text = withEllipsis(display.text.first(end), display.rightToLeft);
        return laidOut({text, display.rightToLeft}, font);
    };
    const auto tooWide = std::partition_point(ends.begin() + 1, ends.end(), [&](qsizetype end) {
        return naturalWidth(*beginningUpTo(end)) <= width;
    });
    return beginningUpTo(*std::prev(tooWide));
}

/// Breaks the text at spaces into at most lineLimit lines. The last line contains the remaining
/// text and may be too wide.
std::vector<Layout> broken(const DisplayText& display, const QFont& font, const QTextLayout& layout,
                           int lineLimit)
{
    const int count = std::clamp(layout.lineCount(), 1, lineLimit);
    std::vector<Layout> lines;
    for (int i = 0; i < count; ++i) {
        const bool isLast = i + 1 == count;
        const int start = i == 0 ? 0 : layout.lineAt(i).textStart();
        QString text = display.text.mid(start, isLast ? -1 : layout.lineAt(i).textLength());
        while (!isLast && text.endsWith(u' '))
            text.chop(1);
        lines.push_back(laidOut({text, display.rightToLeft}, font));
    }
    return lines;
}

/// Breaks a text into at most lineLimit lines. The text is condensed as little as possible. The
/// size of the text is reduced only if the greatest condensing is not enough, and also as little as
/// possible. A text that must be truncated is broken at full size with the greatest condensing.
std::vector<Layout> linesOf(const DisplayText& display, const QFont& font, double available,
                            int lineLimit)
{
    std::vector<Layout> lines;
    if (lineLimit == 1) {
        lines.push_back(laidOut(display, font));
        return lines;
    }
    const auto atPercent = [&](int percent) {
        return laidOut(display, font, available * 100 / percent);
    };
    if (const Layout full = atPercent(100); full->lineCount() <= lineLimit)
        return broken(display, font, *full, lineLimit);
    constexpr int smallest = narrowestStretch * smallestSize / 100;
    std::vector<int> percents(100 - smallest);
    std::iota(percents.rbegin(), percents.rend(), smallest);
    const auto enough = std::partition_point(percents.begin(), percents.end(), [&](int percent) {
        return atPercent(percent)->lineCount() > lineLimit;
    });
    const int percent = enough == percents.end() ? narrowestStretch : *enough;
    return broken(display, font, *atPercent(percent), lineLimit);
}

double widest(const std::vector<Layout>& lines)
{
    double width = 0;
    for (const Layout& line : lines)
        width = std::max(width, naturalWidth(*line));
    return width;
}

/// Returns a line whose baseline is that of the text's own font, even if a character comes from a
/// substitute font with a greater ascent.
ShapedLine shapedLine(const QTextLayout& layout, const QFontMetricsF& metrics, const Fit& fit)
{
    const double ascent = layout.lineCount() == 0 ? metrics.ascent() : layout.lineAt(0).ascent();
    return {layout.text(),
            lineGlyphs(layout),
            {0, (metrics.ascent() - ascent) * fit.vertical()},
            naturalWidth(layout) * fit.horizontal(),
            (ascent + metrics.underlinePos()) * fit.vertical()};
}

void place(ShapedText& text, const TextFrame& frame, double lineHeight)
{
    double top = (frame.height - static_cast<double>(text.lines.size()) * lineHeight) / 2;
    for (ShapedLine& line : text.lines) {
        line.corner = {frame.leftOf(line.width), line.corner.y() + top};
        top += lineHeight;
    }
}

void drawPiece(const GlyphPiece& piece, QPointF corner, QPainter& painter)
{
    if (!piece.mirroredFrom) {
        painter.drawGlyphRun(corner, piece.run);
        return;
    }
    const QTransform former = painter.worldTransform();
    painter.translate(corner.x() + *piece.mirroredFrom, corner.y());
    painter.scale(-1, 1);
    painter.drawGlyphRun({}, piece.run);
    painter.setWorldTransform(former);
}

} // namespace

double TextFrame::leftOf(double textWidth) const
{
    switch (align) {
    case Align::Left:
        return free.left;
    case Align::Right:
        return free.right - textWidth;
    case Align::Centre:
        break;
    }
    return (width - textWidth) / 2;
}

QFont twipFont(const QString& family, double points, bool bold)
{
    QFont font(family);
    font.setPixelSize(qRound(points * runtime::twipsPerPoint));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double textWidth(const QString& text, bool rightToLeft, const QFont& font)
{
    return naturalWidth(*laidOut({text, rightToLeft}, font));
}

ShapedText shapedText(const TextFrame& frame, const QString& text, const QFont& font)
{
    const DisplayText display = displayText(text, frame.rightToLeft);
    const QFontMetricsF metrics(font);
    const double available = frame.available();
    const int lineLimit = std::max(1, static_cast<int>(frame.height / metrics.height()));
    std::vector<Layout> lines = linesOf(display, font, available, lineLimit);
    ShapedText shaped;
    shaped.rightToLeft = display.rightToLeft;
    shaped.fit = fitted(widest(lines), available);
    if (shaped.fit.isCut) {
        const double width = available / shaped.fit.horizontal();
        for (Layout& line : lines) {
            if (naturalWidth(*line) > width)
                line = cut({line->text(), display.rightToLeft}, font, width);
        }
    }
    shaped.naturalWidth = widest(lines);
    for (const Layout& line : lines)
        shaped.lines.push_back(shapedLine(*line, metrics, shaped.fit));
    place(shaped, frame, metrics.height() * shaped.fit.vertical());
    return shaped;
}

void drawGlyphs(const ShapedText& text, QPointF corner, QPainter& painter)
{
    const QTransform former = painter.worldTransform();
    for (const ShapedLine& line : text.lines) {
        QPointF lineCorner = corner + line.corner;
        if (text.fit != Fit()) {
            painter.translate(lineCorner);
            painter.scale(text.fit.horizontal(), text.fit.vertical());
            lineCorner = {};
        }
        for (const GlyphPiece& piece : line.glyphs)
            drawPiece(piece, lineCorner, painter);
        if (text.fit != Fit())
            painter.setWorldTransform(former);
    }
}

std::vector<QLineF> underlines(const ShapedText& text, QPointF corner)
{
    std::vector<QLineF> lines;
    for (const ShapedLine& line : text.lines) {
        const QPointF begin = corner + line.corner + QPointF(0, line.underline);
        lines.emplace_back(begin, begin + QPointF(line.width, 0));
    }
    return lines;
}

} // namespace report
