#include "calculation/cuts.h"

#include "platform/runtime/run_time_error.h"

#include <cmath>

namespace cuts {

namespace {

constexpr double doorFrameSides = 2;

double within(double value)
{
    if (!std::isfinite(value))
        throw runtime::RunTimeError(runtime::Overflow);
    return value;
}

double divided(double dividend, double divisor)
{
    if (divisor == 0)
        throw runtime::RunTimeError(dividend == 0 ? runtime::Overflow : runtime::DivisionByZero);
    return within(dividend / divisor);
}

double known(const std::optional<double>& value)
{
    if (!value)
        throw runtime::RunTimeError(runtime::InvalidUseOfNull);
    return *value;
}

} // namespace

Shutter shutter(const Size& opening, const Monoblock& monoblock)
{
    Shutter result;
    result.reduced.width = within(opening.width - monoblock.widthDeduct);
    result.reduced.height = within(opening.height - monoblock.heightDeduct);
    result.uCut = opening.height - uCutAllowance;
    result.uVasa = opening.height - uVasaAllowance;
    result.shalavWidth = within(opening.width - monoblock.shalavWidthDeduct);
    result.argaz.width = opening.width;
    result.argaz.height = monoblock.heightDeduct;
    return result;
}

double shalavCount(const Size& opening, const Monoblock& monoblock)
{
    return divided(opening.height - shalavHeightAllowance, monoblock.shalavThick);
}

Size doorOpening(const Size& opening, double thickness)
{
    return {within(opening.width - doorFrameSides * thickness), within(opening.height - thickness)};
}

double cutWidth(const Series& series, Part part, const Size& base)
{
    const auto& deduction = series.deductions[part].width;
    if (part == Mashkof)
        return within(known(deduction) + base.width);
    const double sashes = known(series.kanafNum);
    return divided(within(known(deduction) + base.width), sashes);
}

double cutHeight(const Series& series, Part part, const Size& base)
{
    return within(known(series.deductions[part].height) + base.height);
}

} // namespace cuts
