#pragma once

#include "store/schema.h"

#include <vector>

namespace dao {
class Database;
}

namespace storetools {

/// What tables, fields and indexes a store has, in the terms in which they are described.
using Layout = std::vector<store::TableSchema>;

Layout layoutOf(dao::Database& database);

/// The table of exactly this name; null where there is none.
const store::TableSchema* tableIn(const Layout& layout, const QString& name);

} // namespace storetools
