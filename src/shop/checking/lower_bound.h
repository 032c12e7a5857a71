#pragma once

#include <vector>

namespace shop::checking {

/// Returns a lower bound of the number of bars that the pieces need. It follows from the pieces
/// that cannot share a bar and from the sum of the others. Differences of the size of
/// floating-point noise never raise it.
int lowerBound(std::vector<double> lengths, double usable, double kerf);

} // namespace shop::checking
