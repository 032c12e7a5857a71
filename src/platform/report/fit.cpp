#include "platform/report/fit.h"

#include <cmath>

namespace report {

namespace {

/// Returns part / whole in whole percents, rounded down. A tiny value is added before rounding.
/// Otherwise a floating-point error could reduce the result by one percent.
int percentOf(double part, double whole)
{
    constexpr double roundingError = 1e-9;
    return static_cast<int>(std::floor(part / whole * 100 + roundingError));
}

} // namespace

Fit fitted(double natural, double available)
{
    if (natural <= available)
        return {};
    const int stretch = percentOf(available, natural);
    if (stretch >= narrowestStretch)
        return {.stretch = stretch};
    const int size = percentOf(available, natural * narrowestStretch / 100);
    if (size >= smallestSize)
        return {.stretch = narrowestStretch, .size = size};
    return {.stretch = narrowestStretch, .isCut = true};
}

} // namespace report
