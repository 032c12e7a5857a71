#include "calculation/line_marks.h"

#include "platform/runtime/conversions.h"
#include "platform/runtime/direction_marks.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace cuts {

namespace {

/// The greatest allowed overlap, in the measures' unit. All sashes together may be wider than the
/// opening by this value, and a sash may be higher by it. Sashes overlap each other, and the sash
/// of a pocket window overlaps the wall beside it.
constexpr double mostOverlap = 5;
/// The minimum share of the opening's width and height. A smaller sash, pane or mesh is marked as a
/// mistake. Its width is multiplied by the number of sashes before it is compared. For a monoblock,
/// the opening is what the monoblock leaves for the window. The minimum for a door is greater,
/// because a door has no glass and only its sash is checked.
constexpr double leastShare = 0.3;
constexpr double leastShareOfDoor = 0.6;
/// The minimum share of the opening's height that the shutter box of a monoblock leaves for the
/// window.
constexpr double leastShareUnderBox = 0.5;
constexpr double steepestSides = 10;
/// The limits for the width of a sash and for the height of an opening, in centimetres. No workshop
/// makes a smaller or a larger one. The measures are taken as centimetres, because the fixed
/// measures of the monoblock are centimetres.
constexpr double leastMeasure = 15;
constexpr double mostMeasure = 500;
/// A measure is marked as a probable mistake if it is at least 8 times the median of the
/// neighbouring lines, or at most a ninth of it. A missing digit divides a measure by about 10, and
/// an extra digit multiplies it by about 10. A shop window that is seven times as wide as the
/// windows beside it is not marked, and neither is a vent with one eighth of the height of a door.
constexpr double mostTimesMedian = 8;
constexpr double leastPartOfMedian = 9;
constexpr std::size_t fewestNeighbours = 2;

const QString widthPerSash = u"הרוחב לכל כנף"_s;
const QString heightOfOpening = u"גובה הפתח"_s;

const std::array<QString, PartCount>& partNames()
{
    static const std::array names{u"משקוף"_s, u"כנף"_s, u"זכוכית"_s, u"רשת"_s};
    return names;
}

/// Returns a number as text for a Hebrew sentence. Direction marks around the number keep its minus
/// sign in front of it.
QString isolatedNumber(double number)
{
    return runtime::leftToRight(runtime::toText(number));
}

/// Returns true if the widths and heights of glass and mesh are all 0. Only the computation of a
/// door line sets exactly these four sizes to 0.
bool isDoor(const LineFigures& line)
{
    const Size& glass = line.parts[Glass];
    const Size& mesh = line.parts[Reshet];
    return glass.width == 0 && glass.height == 0 && mesh.width == 0 && mesh.height == 0;
}

int computedParts(const LineFigures& line)
{
    return isDoor(line) ? Glass : PartCount;
}

void addIfNotPositive(QStringList& marks, const QString& what, double size)
{
    if (size <= 0)
        marks.append(u"%1: המידה %2 אינה גדולה מאפס."_s.arg(what, isolatedNumber(size)));
}

void addNotPositive(QStringList& marks, const LineFigures& line)
{
    addIfNotPositive(marks, u"רוחב הפתח"_s, line.opening.width);
    addIfNotPositive(marks, heightOfOpening, line.opening.height);
    for (std::size_t part = 0; part < std::size_t(computedParts(line)); ++part) {
        addIfNotPositive(marks, partNames()[part] + u", רוחב"_s, line.parts[part].width);
        addIfNotPositive(marks, partNames()[part] + u", גובה"_s, line.parts[part].height);
    }
    if (!line.isMonoblock)
        return;
    addIfNotPositive(marks, u"הרוחב שנשאר לחלון"_s, line.reduced.width);
    addIfNotPositive(marks, u"הגובה שנשאר לחלון"_s, line.reduced.height);
    if (std::any_of(line.shutter.begin(), line.shutter.end(),
                    [](double each) { return each <= 0; }))
        marks.append(u"מידה של התריס או של הארגז אינה גדולה מאפס."_s);
}

void addTooLarge(QStringList& marks, const LineFigures& line)
{
    const Size& sash = line.parts[Kanaf];
    if (sash.width * line.sashes > line.opening.width + mostOverlap)
        marks.append(u"הכנף רחבה מהפתח."_s);
    if (sash.height > line.opening.height + mostOverlap)
        marks.append(u"הכנף גבוהה מהפתח."_s);
    const Size& glass = line.parts[Glass];
    if (glass.width > sash.width || glass.height > sash.height)
        marks.append(u"הזכוכית גדולה מהכנף."_s);
}

void addTooSmall(QStringList& marks, const LineFigures& line)
{
    const double least = isDoor(line) ? leastShareOfDoor : leastShare;
    const auto isLess = [](double size, double whole, double share) {
        return size > 0 && size < whole * share;
    };
    const auto isTooSmall = [&](double size, double whole) { return isLess(size, whole, least); };
    const Size base = line.isMonoblock ? line.reduced : line.opening;
    for (int part = Kanaf; part < computedParts(line); ++part) {
        const Size& size = line.parts[std::size_t(part)];
        if (isTooSmall(size.width * line.sashes, base.width) ||
            isTooSmall(size.height, base.height))
            marks.append(u"%1: נשאר חלק קטן מאוד מהפתח."_s.arg(partNames()[std::size_t(part)]));
    }
    if (line.isMonoblock && (isTooSmall(line.reduced.width, line.opening.width) ||
                             isLess(line.reduced.height, line.opening.height, leastShareUnderBox)))
        marks.append(u"המונובלוק משאיר לחלון חלק קטן מאוד מהפתח."_s);
}

void addOddSides(QStringList& marks, const LineFigures& line)
{
    const auto [width, height] = line.opening;
    if (isDoor(line) && width > height)
        marks.append(u"הדלת רחבה יותר מגובהה. האם הרוחב והגובה הוחלפו?"_s);
    if (width > height * steepestSides || height > width * steepestSides)
        marks.append(u"צלע אחת של הפתח גדולה פי עשרה ויותר מהשנייה."_s);
}

void addIfOutOfBounds(QStringList& marks, const QString& what, double measure)
{
    if (measure > 0 && measure < leastMeasure)
        marks.append(u"%1 %2 קטן מאוד. האם חסרה ספרה?"_s.arg(what, isolatedNumber(measure)));
    if (measure >= mostMeasure)
        marks.append(u"%1 %2 גדול מאוד. האם יש ספרה מיותרת?"_s.arg(what, isolatedNumber(measure)));
}

void addOutOfBounds(QStringList& marks, const LineFigures& line)
{
    const Size bay = bayOf(line.opening, line.sashes);
    addIfOutOfBounds(marks, widthPerSash, bay.width);
    addIfOutOfBounds(marks, heightOfOpening, bay.height);
}

/// Returns the median. For an even number of values, the median is the mean of the two middle
/// values.
double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

void addIfFar(QStringList& marks, const QString& what, double measure, double median)
{
    if (median <= 0 || measure <= 0)
        return;
    if (measure >= median * mostTimesMedian)
        marks.append(u"%1 %2 גדול פי כמה מהמקובל בהזמנה הזאת (%3)."_s.arg(
            what, isolatedNumber(measure), isolatedNumber(median)));
    else if (measure * leastPartOfMedian <= median)
        marks.append(u"%1 %2 קטן פי כמה מהמקובל בהזמנה הזאת (%3)."_s.arg(
            what, isolatedNumber(measure), isolatedNumber(median)));
}

void addFarFromNeighbours(QStringList& marks, const Size& bay, std::span<const Size> neighbours)
{
    if (neighbours.size() < fewestNeighbours)
        return;
    std::vector<double> widths;
    std::vector<double> heights;
    for (const Size& each : neighbours) {
        widths.push_back(each.width);
        heights.push_back(each.height);
    }
    addIfFar(marks, widthPerSash, bay.width, medianOf(std::move(widths)));
    addIfFar(marks, heightOfOpening, bay.height, medianOf(std::move(heights)));
}

} // namespace

Size bayOf(const Size& opening, double sashes)
{
    return {sashes > 0 ? opening.width / sashes : opening.width, opening.height};
}

QStringList marksOf(const LineFigures& line, std::span<const Size> neighbours)
{
    QStringList marks;
    addNotPositive(marks, line);
    addTooLarge(marks, line);
    addTooSmall(marks, line);
    addOddSides(marks, line);
    addOutOfBounds(marks, line);
    addFarFromNeighbours(marks, bayOf(line.opening, line.sashes), neighbours);
    return marks;
}

} // namespace cuts
