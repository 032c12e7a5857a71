#pragma once

#include "shop/planning/problem.h"

namespace shop::planning {

/// Equal bars with their pieces in cutting order. Equal pieces of a bar are adjacent.
struct SequencedCut
{
    std::vector<Item> items;
    int times = 0;
};
using Sequence = std::vector<SequencedCut>;

/// Sorts the bars, and the pieces within each bar, so that the last length of a bar often is the
/// first length of the next bar. The saw's stop need not be set again between such bars.
Sequence sequenced(const Packing& packing);

/// Returns the bars in the order of the packing, which can set the saw's stop more often than the
/// result of sequenced(). On each bar the longest pieces come first.
Sequence asItStands(const Packing& packing);

/// Returns how often the saw's stop must be set for a sequence of bars.
int stopsOf(const Sequence& sequence);

} // namespace shop::planning
