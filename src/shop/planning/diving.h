#pragma once

#include "shop/planning/columns.h"

namespace shop::planning {

/// Rounds the relaxation to whole bars: cuts its most used patterns, solves it again for the
/// remaining pieces, and so on. Returns a packing of at most `target` bars, or an empty one if none
/// was found.
Packing dive(Columns& columns, int target, std::uint64_t seed, const Limits& limits);

/// Searches the known patterns by branch and bound with a limited number of nodes. Returns like
/// dive.
Packing branchAndBound(const Columns& columns, int target, int nodes, const Limits& limits);

} // namespace shop::planning
