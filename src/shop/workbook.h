#pragma once

#include "shop/tables.h"

#include <QByteArray>

namespace shop {

/// Returns the documents as one XLSX workbook with right-to-left sheets: pieces, cutting list, bar
/// plan, glass and mesh. Numbers have 16 significant digits. The same contents give the same bytes.
/// Throws DiskOrNetworkError (3043) if the workbook cannot be made, for example because a cell's
/// text is too long.
QByteArray workbook(const ShopPack& pack);

} // namespace shop
