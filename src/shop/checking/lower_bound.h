#pragma once

#include <vector>

namespace shop::checking {

/// Returns the greatest of several lower bounds of the number of bars that the pieces need. One
/// bound is the number of pieces longer than half a bar, because no two of them can share a bar.
/// There is a further bound for each length L. A piece that is too long to share a bar with a piece
/// of length L needs a bar of its own. All other pieces from the length L upwards need bars for
/// their total length. Floating-point noise never raises the result.
int lowerBound(std::vector<double> lengths, double usable, double kerf);

} // namespace shop::checking
