#pragma once

#include "shop/planning/problem.h"

namespace shop::planning {

/// Best-fit decreasing: places the longest piece first, each into the fullest bar that it fits in.
/// Returns the bars in the order in which they were started, with equal bars joined.
Packing bestFitDecreasing(const Problem& problem);

/// Returns a lower bound of the number of bars that needs no linear program.
int quickBound(const Problem& problem);

} // namespace shop::planning
