#pragma once

#include "shop/paper/sheet.h"
#include "shop/tables.h"

namespace shop::paper {

/// Each returns the sheets of one list for the workshop, without page numbers.
std::vector<Sheet> cutListSheets(const ShopPack& pack);
std::vector<Sheet> glassSheets(const ShopPack& pack);
std::vector<Sheet> meshSheets(const ShopPack& pack);

} // namespace shop::paper
