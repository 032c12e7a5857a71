#pragma once

#include "shop/planning/problem.h"

namespace shop::planning {

/// Distributes the pieces over bars with best-fit decreasing: the pieces are placed by descending
/// length, each into the fullest bar that has room for it. Returns the bars in the order in which
/// they were started. Equal bars are one entry with a count.
Packing bestFitDecreasing(const Problem& problem);

/// Returns a lower bound of the number of bars. The bound is computed without a linear program.
int quickBound(const Problem& problem);

} // namespace shop::planning
