#include "calculation/explained_cuts.h"

#include "platform/runtime/conversions.h"
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

/// The side of an opening that a part is cut from, with the text of its own computation.
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

/// Returns the difference of two numbers with at most nine decimals, that is without the noise of
/// the subtraction.
QString shownDifference(double whole, double reduced)
{
    constexpr double perUnit = 1e9;
    return shown(std::round((whole - reduced) * perUnit) / perUnit);
}

/// Returns the base with the signed deduction, for example "120 − 2.8".
QString withDeduction(const QString& base, double deduction)
{
    return u"%1 %2 %3"_s.arg(base, deduction > 0 ? u"+"_s : u"−"_s, shown(std::abs(deduction)));
}

bool isBare(Part part, const TodaysSeries& series)
{
    return series.isDoor && part > Kanaf;
}

Base widthBase(const ComputedLine& line, Part part, const TodaysSeries& series)
{
    const QString whole = shown(line.opening.width);
    if (series.isDoor && part == Kanaf)
        return {u"(%1 − 2 × %2)"_s.arg(whole, shown(line.doorThickness)),
                doorOpening(line.opening, line.doorThickness)};
    if (!line.isMonoblock)
        return {whole, line.opening};
    return {u"(%1 − %2)"_s.arg(whole, shownDifference(line.opening.width, line.reduced.width)),
            line.reduced};
}

Base heightBase(const ComputedLine& line, Part part, const TodaysSeries& series)
{
    const QString whole = shown(line.opening.height);
    if (series.isDoor && part == Kanaf)
        return {u"(%1 − %2)"_s.arg(whole, shown(line.doorThickness)),
                doorOpening(line.opening, line.doorThickness)};
    if (!line.isMonoblock)
        return {whole, line.opening};
    return {u"(%1 − %2)"_s.arg(whole, shownDifference(line.opening.height, line.reduced.height)),
            line.reduced};
}

std::optional<Computed> computedWidth(const ComputedLine& line, Part part,
                                      const TodaysSeries& series)
{
    const auto& deduction = series.series.deductions[part].width;
    const bool isUnknown = series.isDoor && line.isMonoblock && part == Mashkof;
    if (isBare(part, series) || isUnknown || !deduction)
        return {};
    const Base base = widthBase(line, part, series);
    QString formula = withDeduction(base.text, *deduction);
    if (part != Mashkof && series.series.kanafNum != 1.0)
        formula = u"(%1) ÷ %2"_s.arg(formula, shown(series.series.kanafNum.value_or(0)));
    return Computed{formula, cutWidth(series.series, part, base.size)};
}

std::optional<Computed> computedHeight(const ComputedLine& line, Part part,
                                       const TodaysSeries& series)
{
    const auto& deduction = series.series.deductions[part].height;
    const bool isUnknown = series.isDoor && line.isMonoblock && part == Mashkof;
    if (isBare(part, series) || isUnknown || !deduction)
        return {};
    const Base base = heightBase(line, part, series);
    return Computed{withDeduction(base.text, *deduction),
                    cutHeight(series.series, part, base.size)};
}

bool isSame(double one, double other)
{
    return std::abs(one - other) < smallest;
}

/// Returns a formula or number for a Hebrew text. The marks around it keep its reading direction.
QString isolated(const QString& text)
{
    return u"\u2066"_s + text + u"\u2069"_s;
}

QString explained(const std::optional<Computed>& computed, double actual)
{
    if (!computed)
        return {};
    QString formula = isolated(computed->formula + u" = "_s + shown(computed->result));
    if (isSame(computed->result, actual))
        return formula;
    return u"לפי הסדרה של היום: %1\nהמידה כאן היא %2: הסדרה שונתה אחרי שהשורה נוספה."_s.arg(
        formula, isolated(shown(actual)));
}

/// Runs a computation that fails for a series with 0 sashes or with a Null.
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

QString explainedWidth(const ComputedLine& line, Part part, const TodaysSeries& series)
{
    return unlessItFails(
        [&] { return explained(computedWidth(line, part, series), line.parts[part].width); });
}

QString explainedHeight(const ComputedLine& line, Part part, const TodaysSeries& series)
{
    return unlessItFails(
        [&] { return explained(computedHeight(line, part, series), line.parts[part].height); });
}

QString explainedDifference(double whole, double deduction, double actual)
{
    if (!isSame(whole - deduction, actual))
        return {};
    return isolated(withDeduction(shown(whole), -deduction) + u" = "_s + shown(actual));
}

QString explainedSlats(const Size& opening, double thickness, int actual)
{
    if (!(thickness > 0))
        return {};
    const double slats = (opening.height - shalavHeightAllowance) / thickness;
    if (std::nearbyint(slats) != actual)
        return {};
    return isolated(u"(%1 − %2) ÷ %3 %4 %5"_s.arg(
        shown(opening.height), shown(shalavHeightAllowance), shown(thickness),
        isSame(slats, actual) ? u"="_s : u"≈"_s, shown(actual)));
}

QString explainedMissingSeries()
{
    return u"הסדרה כבר אינה בקטלוג, ולכן אין הסבר למידה."_s;
}

bool followsFrom(const ComputedLine& line, const TodaysSeries& series)
{
    return unlessItFails([&] {
        for (const Part part : allParts) {
            const auto width = computedWidth(line, part, series);
            const auto height = computedHeight(line, part, series);
            if ((width && !isSame(width->result, line.parts[part].width)) ||
                (height && !isSame(height->result, line.parts[part].height)))
                return false;
        }
        return true;
    });
}

} // namespace cuts
