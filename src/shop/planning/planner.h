#pragma once

#include "shop/bar_settings.h"
#include "shop/planning/sequence.h"

namespace shop::planning {

/// A length and the number of pieces with this length.
struct Demand
{
    double length = 0;
    int count = 0;
};

/// Equal bars, with the lengths that are cut from each of them, in cutting order.
struct PlannedBars
{
    int count = 0;
    double rest = 0; ///< The length that is left of each bar after its last cut.
    std::vector<double> lengths;
};

/// The planned bars of a group of pieces.
struct BarPlan
{
    std::vector<PlannedBars> bars;
    int bound = 0;       ///< No plan needs fewer bars.
    bool proved = false; ///< True if the plan has exactly `bound` bars.
    int stops = 0;       ///< The number of stop settings.

    int barCount() const;
};

/// Returns the planning problem of the pieces. Each piece must fit on a bar.
Problem problemOf(std::vector<Demand> pieces, const BarSettings& settings);

/// Plans the bars for a group of pieces. Returns the plan with the fewest bars that was found. Of
/// several such plans, returns the one that sets the saw's stop least often, and of those the one
/// with the longest single rest (remainder of a bar). The same pieces and settings give the same
/// plan, unless the search is cancelled or reaches its deadline.
BarPlan planBars(const std::vector<Demand>& pieces, const BarSettings& settings,
                 const Limits& limits = {});

/// Returns the plan that best-fit decreasing alone finds, for comparisons.
BarPlan planByBestFit(const std::vector<Demand>& pieces, const BarSettings& settings);

} // namespace shop::planning
