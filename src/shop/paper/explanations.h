#pragma once

#include "shop/paper/sheet.h"
#include "shop/tables.h"

namespace shop::paper {

/// Returns the sheets that show how each size was computed, without page numbers.
std::vector<Sheet> explanationSheets(const ShopPack& pack);

} // namespace shop::paper
