#pragma once

#include <vector>

namespace shop::checking {

/// Returns a lower bound of the number of bars that the pieces need. One bound is the number of
/// pieces of which no two can share a bar. There is a further bound for each length L. A piece that
/// is too long to share a bar with a piece of length L needs a bar of its own. The other pieces
/// that are not shorter than L need bars for their total length. The function returns the greatest
/// of the bounds. Floating-point noise never raises it.
int lowerBound(std::vector<double> lengths, double usable, double kerf);

} // namespace shop::checking
