#pragma once

#include "shop/paper/sheet.h"
#include "shop/tables.h"

namespace shop::paper {

/// The functions cutListSheets, glassSheets and meshSheets return the sheets of the cutting list,
/// of the glass list and of the mesh list, without page numbers.
std::vector<Sheet> cutListSheets(const ShopPack& pack);
std::vector<Sheet> glassSheets(const ShopPack& pack);
std::vector<Sheet> meshSheets(const ShopPack& pack);

} // namespace shop::paper
