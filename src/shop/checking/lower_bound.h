#pragma once

#include <vector>

namespace shop::checking {

/// Returns a lower bound of the number of bars that the pieces need. For each length L, a piece
/// that is too long to share a bar with a piece of length L needs a bar of its own, and the other
/// pieces that are not shorter than L need bars for their total length. The bound is the greatest
/// of these sums, and at least the number of pieces of which no two can share a bar. Floating-point
/// noise never raises the bound.
int lowerBound(std::vector<double> lengths, double usable, double kerf);

} // namespace shop::checking
