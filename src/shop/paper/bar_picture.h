#pragma once

#include "shop/paper/sheet.h"
#include "shop/tables.h"

namespace shop::paper {

class Flow;

/// Returns the sheets of the bar plan, without page numbers.
std::vector<Sheet> barPlanSheets(const ShopPack& pack);

/// Adds the facts and the pictures of all bars of a group.
void addGroupPlan(const GroupPlan& plan, Flow& flow);

} // namespace shop::paper
