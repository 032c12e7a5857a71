#pragma once

#include "shop/planning/columns.h"

namespace shop::planning {

/// Turns a solution of the linear program, which has fractions of bars, into whole bars: cuts the
/// most used patterns (sets of pieces on one bar), solves the program again for the remaining
/// pieces, and repeats these steps. Returns a packing (all pieces, distributed over bars) of at
/// most `target` bars, or an empty packing if none was found.
Packing dive(Columns& columns, int target, std::uint64_t seed, const Limits& limits);

/// Distributes all pieces over bars. Uses only the patterns (sets of pieces on one bar) in
/// `columns`. The search is branch and bound with at most `nodes` nodes. Returns a packing (the
/// bars with their pieces) of at most `target` bars, or an empty packing if none was found.
Packing branchAndBound(const Columns& columns, int target, int nodes, const Limits& limits);

} // namespace shop::planning
