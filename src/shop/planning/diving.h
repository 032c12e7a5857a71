#pragma once

#include "shop/planning/columns.h"

namespace shop::planning {

/// Rounds a solution of the linear relaxation to whole bars: cuts the most used patterns (sets of
/// pieces on one bar), solves the relaxation again for the remaining pieces, and repeats these
/// steps. Returns a packing of at most `target` bars, or an empty packing if none was found.
Packing dive(Columns& columns, int target, std::uint64_t seed, const Limits& limits);

/// Distributes all pieces over bars by branch and bound with at most `nodes` nodes. Uses only the
/// patterns (sets of pieces on one bar) in `columns`. Returns a packing of at most `target` bars,
/// or an empty packing if none was found.
Packing branchAndBound(const Columns& columns, int target, int nodes, const Limits& limits);

} // namespace shop::planning
