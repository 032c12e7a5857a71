#pragma once

#include "shop/bar_settings.h"
#include "shop/planning/sequence.h"

namespace shop::planning {

/// A number of pieces of the same length.
struct Demand
{
    double length = 0;
    int count = 0;
};

/// Equal bars, with their lengths in cutting order.
struct PlannedBars
{
    int count = 0;
    double rest = 0; ///< The length that is left of each bar after its last cut.
    std::vector<double> lengths;
};

/// The bars of a group.
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

/// Plans the bars of a group. Of the plans found, the one with the fewest bars is returned; among
/// equal ones that with the fewest stop settings, and then that with the longest single rest. The
/// same pieces and settings give the same plan, unless the limits end the search early.
BarPlan planBars(const std::vector<Demand>& pieces, const BarSettings& settings,
                 const Limits& limits = {});

/// Returns the plan by best-fit decreasing alone, for comparisons.
BarPlan planByBestFit(const std::vector<Demand>& pieces, const BarSettings& settings);

} // namespace shop::planning
