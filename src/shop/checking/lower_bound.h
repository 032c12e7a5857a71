#pragma once

#include <vector>

namespace shop::checking {

/// Returns a lower bound of the number of bars that the pieces need. The bound is the number of
/// pieces that cannot share a bar plus the number of bars for the total length of the other pieces.
/// Floating-point noise never raises the bound.
int lowerBound(std::vector<double> lengths, double usable, double kerf);

} // namespace shop::checking
