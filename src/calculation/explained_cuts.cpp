#include "calculation/explained_cuts.h"

#include "platform/runtime/conversions.h"
#include "platform/runtime/direction_marks.h"
#include "platform/runtime/run_time_error.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace cuts {

namespace {

/// A computed size and its formula.
struct Computed
{
    QString formula;
    double result = 0;
};

/// The opening from which a part's cut size is computed: the whole opening, or the smaller opening
/// that a door frame or a monoblock leaves. `text` shows how the width or height of this opening is
/// computed, for example "(90 − 2 × 4)".
struct Base
{
    QString text;
    Size size;
};

/// Smaller differences are rounding errors.
constexpr double smallest = 1e-6;

QString shown(double number)
{
    return runtime::toText(number);
}

/// Returns the difference of two numbers as a text. The difference is rounded to nine decimals,
/// which removes the floating-point error of the subtraction.
QString shownDifference(double whole, double reduced)
{
    constexpr double perUnit = 1e9;
    return shown(std::round((whole - reduced) * perUnit) / perUnit);
}

/// Returns the formula `base` with the deduction appended, for example "120 − 2.8".
QString withDeduction(const QString& base, double deduction)
{
    return u"%1 %2 %3"_s.arg(base, deduction > 0 ? u"+"_s : u"−"_s, shown(std::abs(deduction)));
}

double along(const Size& size, Side side)
{
    return side == Side::Width ? size.width : size.height;
}

/// Returns the smaller opening that a door frame leaves for the sash.
Base insideDoorFrame(const ComputedLine& line, Side side)
{
    const QString thickness = shown(line.doorThickness);
    return {u"%1 − %2"_s.arg(shown(along(line.opening, side)),
                             side == Side::Width ? u"2 × "_s + thickness : thickness),
            doorOpening(line.opening, line.doorThickness)};
}

/// Returns the smaller opening that a monoblock leaves for the window.
Base insideMonoblock(const ComputedLine& line, Side side)
{
    const double whole = along(line.opening, side);
    return {u"%1 − %2"_s.arg(shown(whole), shownDifference(whole, along(line.reduced, side))),
            line.reduced};
}

Base baseOf(const ComputedLine& line, Part part, Side side, const TodaysSeries& series)
{
    const bool isSashOfDoor = series.isDoor && part == Kanaf;
    if (!isSashOfDoor && !line.isMonoblock)
        return {shown(along(line.opening, side)), line.opening};
    Base base = isSashOfDoor ? insideDoorFrame(line, side) : insideMonoblock(line, side);
    base.text = u"(%1)"_s.arg(base.text);
    return base;
}

std::optional<double> deductionOf(Part part, Side side, const TodaysSeries& series)
{
    const Deduction& both = series.series.deductions[part];
    return side == Side::Width ? both.width : both.height;
}

bool isSame(double one, double other)
{
    return std::abs(one - other) < smallest;
}

/// Returns true if the frame width of a door line with a monoblock cannot be computed from the
/// stored line. The computation needs the width that the monoblock leaves. The line does not
/// contain it if the field of this width contains the door's inner width instead.
bool isReducedWidthLost(const ComputedLine& line, Part part, Side side, const TodaysSeries& series)
{
    return line.isStored && line.isMonoblock && series.isDoor && part == Mashkof &&
           side == Side::Width &&
           isSame(line.reduced.width, doorOpening(line.opening, line.doorThickness).width);
}

/// Returns a part's cut size with its formula. Returns nothing for the glass and mesh of a door, if
/// the series has no deduction for this size, or if the line lacks a needed value. Throws the
/// errors of cutWidth, for example for 0 sashes.
std::optional<Computed> computedSize(const ComputedLine& line, Part part, Side side,
                                     const TodaysSeries& series)
{
    const bool isBare = series.isDoor && part > Kanaf;
    const std::optional<double> deduction = deductionOf(part, side, series);
    if (isBare || !deduction || isReducedWidthLost(line, part, side, series))
        return {};
    const Base base = baseOf(line, part, side, series);
    QString formula = withDeduction(base.text, *deduction);
    if (side == Side::Height)
        return Computed{formula, cutHeight(series.series, part, base.size)};
    if (part != Mashkof && series.series.kanafNum != 1.0)
        formula = u"(%1) ÷ %2"_s.arg(formula, shown(series.series.kanafNum.value_or(0)));
    return Computed{formula, cutWidth(series.series, part, base.size)};
}

QString formulaOf(const Computed& computed)
{
    return runtime::leftToRight(computed.formula + u" = "_s + shown(computed.result));
}

/// Two forms of the Hebrew word for "size" or "count": `figure` is the word alone, `toFigure` is
/// the word with the prefix "for".
struct FigureWords
{
    QString figure;
    QString toFigure;
};

FigureWords sizeWords()
{
    return {u"המידה"_s, u"למידה"_s};
}

FigureWords countWords()
{
    return {u"הכמות"_s, u"לכמות"_s};
}

QString explainedMissingSeries(const FigureWords& words)
{
    return u"הסדרה כבר אינה בקטלוג, ולכן אין הסבר %1."_s.arg(words.toFigure);
}

/// Returns a Hebrew sentence that says that the series has been changed after the line was added
/// and that there is no explanation. It is used if the series as it is now in the catalogue cannot
/// explain the size or count that the line contains.
QString explainedChangedSeries(const FigureWords& words)
{
    return u"הסדרה שונתה אחרי שהשורה נוספה, ולכן אין הסבר %1."_s.arg(words.toFigure);
}

/// Returns the explanation unchanged if its result equals the figure that the line contains.
/// Otherwise adds a Hebrew sentence that says that the series has been changed.
QString unlessChanged(const QString& explanation, double result, double actual,
                      const FigureWords& words)
{
    if (isSame(result, actual))
        return explanation;
    return u"לפי הסדרה של היום: %1\n%2 כאן היא %3: הסדרה שונתה אחרי שהשורה נוספה."_s.arg(
        explanation, words.figure, runtime::leftToRight(shown(actual)));
}

/// Explains the frame width of a door with a monoblock. The line does not store by how much the
/// monoblock reduces the width. Therefore this deduction is computed backwards from the stored
/// frame width, and a Hebrew sentence says so. If the series does not give every other cut size of
/// the line, returns instead a Hebrew sentence that says that the series has been changed.
QString explainedFrameOfMonoblockDoor(const ComputedLine& line, const TodaysSeries& series)
{
    const std::optional<double> deduction = deductionOf(Mashkof, Side::Width, series);
    const double actual = line.parts[Mashkof].width;
    if (!deduction || line.opening.width + *deduction < actual || !followsFrom(line, series))
        return explainedChangedSeries(sizeWords());
    const QString taken = shownDifference(line.opening.width + *deduction, actual);
    const QString base = u"(%1 − %2)"_s.arg(shown(line.opening.width), taken);
    return u"%1\nהורדת הרוחב של המונובלוק, %2, אינה שמורה בשורה של דלת. היא חושבה מהמידה לפי "
           "הסדרה של היום."_s.arg(formulaOf({withDeduction(base, *deduction), actual}),
                                  runtime::leftToRight(taken));
}

/// Returns the result of `compute`, or an empty value if `compute` throws a run-time error. A
/// computation fails for a series with 0 sashes or with a Null.
template <typename Compute>
auto unlessItFails(Compute&& compute) -> decltype(compute())
{
    try {
        return compute();
    } catch (const runtime::RunTimeError&) {
        return {};
    }
}

} // namespace

QString explainedOpening(const ComputedLine& line, Side side, const TodaysSeries* series)
{
    const bool isWidth = side == Side::Width;
    QString what =
        u"%1 הפתח כפי שהוקלד, ביחידת המידה של הורדות הסדרה."_s.arg(isWidth ? u"רוחב"_s : u"גובה"_s);
    if (series == nullptr || (!series->isDoor && !line.isMonoblock))
        return what;
    return unlessItFails([&] {
        const Base rest =
            series->isDoor ? insideDoorFrame(line, side) : insideMonoblock(line, side);
        return u"%1\n%2 שנשאר %3: %4"_s.arg(what, isWidth ? u"הרוחב"_s : u"הגובה"_s,
                                            series->isDoor ? u"לכנף הדלת"_s : u"לחלון"_s,
                                            formulaOf({rest.text, along(rest.size, side)}));
    });
}

QString explainedSize(const ComputedLine& line, Part part, Side side, const TodaysSeries* series)
{
    if (series == nullptr)
        return explainedMissingSeries(sizeWords());
    if (isReducedWidthLost(line, part, side, *series))
        return explainedFrameOfMonoblockDoor(line, *series);
    const double actual = along(line.parts[part], side);
    if (series->isDoor && part > Kanaf && actual == 0)
        return u"0, כי לדלת אין זכוכית ורשת."_s;
    const auto computed = unlessItFails([&] { return computedSize(line, part, side, *series); });
    return computed ? unlessChanged(formulaOf(*computed), computed->result, actual, sizeWords())
                    : explainedChangedSeries(sizeWords());
}

QString explainedCount(const ComputedLine& line, Part part, const TodaysSeries* series)
{
    const double actual = line.counts[part];
    if (part == Mashkof)
        return u"%1 (מספר קבוע, בכל הסדרות)"_s.arg(runtime::leftToRight(shown(framePieces))) +
               (actual == framePieces ? QString() : u"\nבשורה הזאת כתובה כמות אחרת."_s);
    if (series == nullptr)
        return explainedMissingSeries(countWords());
    const std::optional<double> sashes = series->series.kanafNum;
    if (!sashes)
        return explainedChangedSeries(countWords());
    const QString number = shown(*sashes);
    const bool isDoubled = part == Kanaf && !(series->isDoor && line.isStored);
    if (!isDoubled)
        return unlessChanged(u"%1 (מספר הכנפיים בסדרה)"_s.arg(runtime::leftToRight(number)),
                             *sashes, actual, countWords());
    const double pieces = 2 * *sashes;
    const QString doubled = unlessChanged(
        u"%1 (מספר הכנפיים בסדרה כפול 2)"_s.arg(formulaOf({number + u" × 2"_s, pieces})), pieces,
        actual, countWords());
    return series->isDoor
               ? u"%1\nבשורה של דלת תישמר הכמות %2."_s.arg(doubled, runtime::leftToRight(number))
               : doubled;
}

QString explainedDifference(double whole, double deduction, double actual)
{
    if (!isSame(whole - deduction, actual))
        return {};
    return runtime::leftToRight(withDeduction(shown(whole), -deduction) + u" = "_s + shown(actual));
}

QString explainedSlats(const Size& opening, double thickness, int actual)
{
    if (!(thickness > 0))
        return {};
    const double slats = (opening.height - shalavHeightAllowance) / thickness;
    if (std::nearbyint(slats) != actual)
        return {};
    return runtime::leftToRight(u"(%1 − %2) ÷ %3 %4 %5"_s.arg(
        shown(opening.height), shown(shalavHeightAllowance), shown(thickness),
        isSame(slats, actual) ? u"="_s : u"≈"_s, shown(actual)));
}

bool followsFrom(const ComputedLine& line, const TodaysSeries& series)
{
    return unlessItFails([&] {
        for (const Part part : allParts) {
            for (const Side side : {Side::Width, Side::Height}) {
                const auto computed = computedSize(line, part, side, series);
                if (computed && !isSame(computed->result, along(line.parts[part], side)))
                    return false;
            }
        }
        return true;
    });
}

} // namespace cuts
