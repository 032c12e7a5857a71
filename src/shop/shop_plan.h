#pragma once

#include "shop/pieces.h"
#include "shop/planning/problem.h"

#include <functional>

namespace shop {

/// A set of equal bars. Each is cut into the same lengths in the same order.
struct GroupBars
{
    int count = 0;
    double rest = 0;           ///< The length that is left of each bar after its last cut.
    std::vector<Piece> pieces; ///< The pieces of all these bars, bar after bar, in cutting order.

    std::size_t piecesPerBar() const { return pieces.size() / static_cast<std::size_t>(count); }
};

/// The bar plan of a group of pieces.
struct GroupPlan
{
    GroupKey group;
    BarSettings settings;
    int bound = 0;       ///< No plan needs fewer bars.
    bool proved = false; ///< True if the plan has exactly `bound` bars.
    int stops = 0;       ///< The number of stop settings.
    std::vector<GroupBars> bars;

    int barCount() const;
};

/// A progress function, called with the number of planned groups. Different threads call it, but
/// never at the same time.
using PlanProgress = std::function<void(std::size_t done, std::size_t all)>;

/// Plans each group of the pieces and returns the plans by part, profile and colour. Groups are
/// planned in parallel. After a cancellation or the deadline, the remaining groups get the quickest
/// plan, best-fit decreasing.
std::vector<GroupPlan> planGroups(const std::vector<Piece>& pieces, const SettingsByGroup& settings,
                                  const planning::Limits& limits = {},
                                  const PlanProgress& progress = {});

} // namespace shop
