#include "platform/report/text_shaper.h"

#include "platform/report/report_text.h"

#include <QFontMetricsF>
#include <QRawFont>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <algorithm>
#include <memory>
#include <numeric>

namespace report {

using namespace Qt::StringLiterals;

namespace {

constexpr double twipsPerPoint = 20;
/// Wide enough for any one line; the toolkit's own greatest width has a special meaning.
constexpr double endlessWidth = 1 << 20;
/// What a text keeps from the border of its box.
constexpr double boxInset = 20;
/// Texts kept shaped: a few pages' worth.
constexpr std::size_t keptTexts = 1024;

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

/// The longest beginning of the text, in whole characters, that is not wider than the width; one
/// character at the least.
Layout cut(const DisplayText& display, const QFont& font, double width)
{
    std::vector<qsizetype> ends;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, display.text);
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary())
        ends.push_back(end);
    const auto beginningUpTo = [&](qsizetype end) {
        return laidOut({display.text.first(end), display.rightToLeft}, font);
    };
    const auto tooWide = std::partition_point(ends.begin() + 1, ends.end(), [&](qsizetype end) {
        return naturalWidth(*beginningUpTo(end)) <= width;
    });
    return beginningUpTo(*std::prev(tooWide));
}

/// A caption of the design was drawn to fit. Where the type at hand runs a little wider, it is set
/// whole and overhangs, rather than losing its colon.
bool isDesignCaption(const ControlDesign& control, const QString& text)
{
    return control.kind == Kind::Label && text == control.text;
}

/// Where a text stands that leaves `room` of the control's width; negative room overhangs.
double alignedLeft(const ControlDesign& control, Align align, double room)
{
    const double inset =
        (control.style & Style::Boxed) != 0 ? std::clamp(room / 2, 0.0, boxInset) : 0;
    switch (align) {
    case Align::Left:
        return inset;
    case Align::Right:
        return room - inset;
    case Align::Centre:
        break;
    }
    return room / 2;
}

struct Glyph
{
    QRawFont font;
    quint32 index;
    QPointF position;
};

/// The glyphs of a line, the leftmost first, whatever direction each part of the text has.
std::vector<Glyph> sortedGlyphs(const QTextLayout& layout)
{
    std::vector<Glyph> glyphs;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        for (qsizetype i = 0; i < indexes.size(); ++i)
            glyphs.push_back({run.rawFont(), indexes[i], positions[i]});
    }
    std::stable_sort(glyphs.begin(), glyphs.end(), [](const Glyph& a, const Glyph& b) {
        return a.position.x() < b.position.x();
    });
    return glyphs;
}

QList<QGlyphRun> glyphsFromTheLeft(const QTextLayout& layout)
{
    const std::vector<Glyph> glyphs = sortedGlyphs(layout);
    QList<QGlyphRun> runs;
    for (auto first = glyphs.begin(); first != glyphs.end();) {
        const auto end = std::find_if(first, glyphs.end(),
                                      [&](const Glyph& each) { return each.font != first->font; });
        QList<quint32> indexes;
        QList<QPointF> positions;
        for (auto each = first; each != end; ++each) {
            indexes.append(each->index);
            positions.append(each->position);
        }
        QGlyphRun run;
        run.setRawFont(first->font);
        run.setGlyphIndexes(indexes);
        run.setPositions(positions);
        runs.append(run);
        first = end;
    }
    return runs;
}

ShapedLine oneLine(const DisplayText& display, const QFont& font, const ControlDesign& control,
                   double top)
{
    Layout layout = laidOut(display, font);
    Align align = control.align;
    if (naturalWidth(*layout) > control.width && !isDesignCaption(control, display.text)) {
        layout = cut(display, font, control.width);
        // It stands at the edge at which it begins, whatever the control's alignment says.
        const bool beginsAtTheRight = layout->lineAt(0).cursorToX(0) > control.width / 2.0;
        align = beginsAtTheRight ? Align::Right : Align::Left;
    }
    const double width = naturalWidth(*layout);
    const double left = alignedLeft(control, align, control.width - width);
    const QFontMetricsF metrics(font);
    return {layout->text(),
            glyphsFromTheLeft(*layout),
            {left, top},
            width,
            metrics.ascent() + metrics.underlinePos()};
}

/// The text's lines where it may take several: broken at blanks, the rest on the last.
std::vector<QString> broken(const DisplayText& display, const QFont& font, double width,
                            int lineLimit)
{
    const Layout layout = laidOut(display, font, width);
    const int count = std::clamp(layout->lineCount(), 1, lineLimit);
    std::vector<QString> lines;
    for (int i = 0; i < count; ++i) {
        const int start = i == 0 ? 0 : layout->lineAt(i).textStart();
        const qsizetype length = i + 1 < count ? layout->lineAt(i).textLength() : -1;
        lines.push_back(display.text.mid(start, length));
    }
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        while (lines[i].endsWith(u' '))
            lines[i].chop(1);
    }
    return lines;
}

ShapedText shape(const ControlDesign& control, const QString& text, const QFont& font)
{
    const DisplayText display = displayText(text, (control.style & Style::RightToLeft) != 0);
    const double lineHeight = QFontMetricsF(font).height();
    const int lineLimit = std::max(1, static_cast<int>(control.height / lineHeight));
    std::vector<QString> texts{display.text};
    if (lineLimit > 1)
        texts = broken(display, font, control.width, lineLimit);
    ShapedText lines;
    for (const QString& each : texts)
        lines.push_back(oneLine({each, display.rightToLeft}, font, control,
                                static_cast<double>(lines.size()) * lineHeight));
    return lines;
}

} // namespace

TextShaper::TextShaper(QStringView fontFamily) : family_(fontFamily.toString()) {}

const QFont& TextShaper::font(const ControlDesign& control)
{
    const bool bold = (control.style & Style::Bold) != 0;
    const auto [entry, isNew] = fonts_.try_emplace({control.points, bold});
    if (isNew) {
        QFont& font = entry->second;
        font.setFamily(family_);
        font.setPixelSize(qRound(control.points * twipsPerPoint));
        font.setBold(bold);
        font.setHintingPreference(QFont::PreferNoHinting);
    }
    return entry->second;
}

const ShapedText& TextShaper::shaped(const ControlDesign& control, const QString& text)
{
    const auto found = kept_.find({&control, text});
    if (found != kept_.end())
        return found->second;
    if (kept_.size() >= keptTexts)
        kept_.clear();
    return kept_.emplace(Key{&control, text}, shape(control, text, font(control))).first->second;
}

} // namespace report
