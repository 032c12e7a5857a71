#pragma once

#include "shop/paper/sheet.h"
#include "shop/tables.h"

namespace shop::paper {

class Flow;

/// Returns the sheets of the bar plan, without page numbers.
std::vector<Sheet> barPlanSheets(const ShopPack& pack);

/// Adds the bar plan of a group of pieces to the sheets: its figures and the pictures of all its
/// bars.
void addGroupPlan(const GroupPlan& plan, Flow& flow);

} // namespace shop::paper
