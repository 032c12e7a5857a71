#pragma once

#include "shop/tables.h"

#include <QByteArray>

namespace shop {

/// Returns the documents as one XLSX workbook with right-to-left sheets: pieces, cutting list, bar
/// plan, glass and mesh. Numbers have 16 significant digits. If the list of order lines in a row
/// exceeds the 32,767 characters of a cell, it continues in further columns. The same contents give
/// the same bytes. Throws DiskOrNetworkError (3043) if the workbook cannot be made.
QByteArray workbook(const ShopPack& pack);

} // namespace shop
