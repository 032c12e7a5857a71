#include "shop/paper/bar_picture.h"

#include "platform/runtime/direction_marks.h"
#include "shop/paper/flow.h"
#include "shop/paper/words.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace shop::paper {

namespace {

constexpr double lengthPoints = 10;
constexpr double linePoints = 9;
constexpr int barHeight = 340;
constexpr int barGap = 140;
/// Width of the column that shows the number of equal bars, to the right of the picture of a bar.
constexpr int countWidth = 700;
constexpr int pictureWidth = Flow::width - countWidth;
/// A piece's box in the picture shows the piece's length only if the box is at least this wide. The
/// list below the picture contains all lengths.
constexpr int narrowestText = 330;
/// The box of a rest in the picture shows the rest's length only if the box is at least this wide.
/// The length is also printed below the picture.
constexpr int narrowestRest = 700;
/// Width of the text with the rest's length, which is printed below the left end of the picture.
constexpr int restWidth = 2200;
constexpr qsizetype listedPerPiece = 12;

double lengthSum(const GroupPlan& plan)
{
    double sum = 0;
    for (const GroupBars& bars : plan.bars) {
        for (const Piece& each : bars.pieces)
            sum += each.length;
    }
    return sum;
}

QString wasteText(const GroupPlan& plan)
{
    const double bought = plan.barCount() * plan.settings.barLength;
    return QString::number(100 * (bought - lengthSum(plan)) / bought, 'f', 1);
}

/// The picture of one bar. Boxes show the pieces and are drawn to scale from right to left.
class BarPicture
{
public:
    BarPicture(const GroupPlan& plan, const GroupBars& bars, int top, Flow& flow)
        : settings_(plan.settings), bars_(bars), top_(top), flow_(flow),
          scale_(pictureWidth / plan.settings.barLength)
    {
    }

    void draw()
    {
        flow_.add(BoxItem{{Flow::left, top_, pictureWidth, barHeight}});
        span(settings_.trim, Fill::Dark, {});
        const double usable = settings_.usable();
        double used = 0;
        for (std::size_t i = 0; i < bars_.piecesPerBar(); ++i) {
            const double length = bars_.pieces[i].length;
            span(length, Fill::Light, computedNumber(length));
            used += length;
            const double kerf = std::clamp(usable - used, 0.0, settings_.kerf);
            span(kerf, Fill::Dark, {});
            used += kerf;
        }
        const bool isWide = bars_.rest * scale_ >= narrowestRest;
        span(bars_.rest, Fill::None, isWide ? computedNumber(bars_.rest) : QString());
        span(settings_.trim, Fill::Dark, {});
    }

private:
    int edge(double position) const
    {
        return Flow::left + pictureWidth - static_cast<int>(std::lround(position * scale_));
    }

    void span(double length, Fill fill, const QString& text)
    {
        const int begin = edge(position_);
        position_ += length;
        const int end = edge(position_);
        if (begin == end)
            return;
        flow_.add(BoxItem{{end, top_, begin - end, barHeight}, fill, fill != Fill::Dark});
        if (begin - end >= narrowestText)
            flow_.add(TextItem{{end + 20, top_, begin - end - 40, barHeight},
                               text,
                               lengthPoints,
                               fill == Fill::Light,
                               report::Align::Centre});
    }

    const BarSettings& settings_;
    const GroupBars& bars_;
    int top_;
    Flow& flow_;
    double scale_;
    double position_ = 0;
};

/// Returns the order lines of the pieces at one position in the cutting order. `bars` contains bars
/// that are cut into the same lengths, and each of them has one piece at this position.
QStringList linesAt(const GroupBars& bars, std::size_t position)
{
    QStringList lines;
    for (std::size_t i = position; i < bars.pieces.size(); i += bars.piecesPerBar())
        lines.append(u"%1-%2"_s.arg(bars.pieces[i].order).arg(bars.pieces[i].line));
    lines.removeDuplicates();
    return lines;
}

/// Returns the list of cuts for a picture that shows several equal bars: each length in cutting
/// order, followed by the order lines of the pieces that have this place on the bars. Adjacent
/// equal lengths are one entry with a count.
QStringList cutsOf(const GroupBars& bars)
{
    QStringList cuts;
    const std::size_t perBar = bars.piecesPerBar();
    for (std::size_t i = 0; i < perBar;) {
        const double length = bars.pieces[i].length;
        QStringList lines;
        int count = 0;
        for (; i < perBar && bars.pieces[i].length == length; ++i, ++count)
            lines += linesAt(bars, i);
        lines.removeDuplicates();
        cuts.append(runtime::leftToRight(u"%1×%2"_s.arg(count).arg(computedNumber(length))));
        for (qsizetype from = 0; from < lines.size(); from += listedPerPiece) {
            const bool isFirst = from == 0;
            const bool isLast = from + listedPerPiece >= lines.size();
            cuts.append((isFirst ? u"("_s : QString()) +
                        lines.mid(from, listedPerPiece).join(u", "_s) + (isLast ? u")"_s : u","_s));
        }
    }
    return cuts;
}

QString restText(const GroupPlan& plan, const GroupBars& bars)
{
    const bool isKept = bars.rest >= plan.settings.offcut;
    return (isKept ? u"שארית לשמירה: "_s : u"שארית: "_s) + computedNumber(bars.rest);
}

void addBars(const GroupPlan& plan, const GroupBars& bars, Flow& flow)
{
    const int listWidth = pictureWidth - restWidth;
    const QStringList cuts = brokenItems(cutsOf(bars), linePoints, listWidth);
    flow.require(barHeight + lineHeight(linePoints) * 2 + barGap);
    const int top = flow.take(barHeight);
    BarPicture(plan, bars, top, flow).draw();
    flow.add(TextItem{{Flow::right - countWidth + 60, top, countWidth - 60, barHeight},
                      u"×%1"_s.arg(bars.count),
                      groupPoints,
                      true,
                      report::Align::Centre});
    const int height = lineHeight(linePoints);
    for (qsizetype i = 0; i < cuts.size(); ++i) {
        const int lineTop = flow.take(height);
        // The list of lengths contains no letters. It begins with a right-to-left mark, so that it
        // is printed from right to left like the pieces in the picture.
        flow.add(TextItem{{Flow::left + restWidth, lineTop, listWidth, height},
                          runtime::rightToLeftMark + cuts[i],
                          linePoints});
        if (i == 0)
            flow.add(TextItem{{Flow::left, lineTop, restWidth, height},
                              restText(plan, bars),
                              linePoints,
                              false,
                              report::Align::Left});
    }
    flow.skip(barGap);
}

} // namespace

void addGroupPlan(const GroupPlan& plan, Flow& flow)
{
    const BarSettings& settings = plan.settings;
    flow.require(3 * lineHeight(groupPoints) + 2 * barHeight + barGap);
    flow.paragraph(groupWords(plan.group), groupPoints, true);
    flow.line(u"מוטות: %1   גבול תחתון: %2   %3"_s.arg(plan.barCount())
                  .arg(plan.bound)
                  .arg(proofWords(plan)),
              factPoints);
    flow.line(u"פחת: %1%   כיוונוני מעצור: %2   אורך מוט: %3   חיתוך: %4   קצה: %5   זווית: %6"_s
                  .arg(wasteText(plan))
                  .arg(plan.stops)
                  .arg(numberText(settings.barLength), numberText(settings.kerf),
                       numberText(settings.trim), numberText(settings.angle)),
              factPoints);
    for (const GroupBars& each : plan.bars)
        addBars(plan, each, flow);
    flow.skip(barGap);
}

std::vector<Sheet> barPlanSheets(const ShopPack& pack)
{
    Flow flow(u"תוכנית מוטות"_s, pack.orders);
    addFaults(pack.pieces.faults, flow);
    flow.line(u"סדר החיתוך מימין לשמאל. מתחת לכל מוט: כמות×אורך, ובסוגריים הזמנה-שורה."_s,
              factPoints);
    flow.skip(barGap);
    for (const GroupPlan& each : pack.groups)
        addGroupPlan(each, flow);
    return flow.take();
}

} // namespace shop::paper
