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

/// Orders the bars and the pieces of each bar so that the last length of a bar often is the first
/// of the next one. The stop then need not be set.
Sequence sequenced(const Packing& packing);

/// Returns the bars in the order of the packing, with the longest pieces first.
Sequence asItStands(const Packing& packing);

/// Returns the number of stop settings.
int stopsOf(const Sequence& sequence);

} // namespace shop::planning
