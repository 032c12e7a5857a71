#pragma once

#include "store/schema.h"

#include <vector>

namespace dao {
class Database;
}

namespace storetools {

/// The definitions of the tables that a store actually has, with their fields and indexes. The
/// program's own tables ("zomrel_...") are last.
using Layout = std::vector<store::TableSchema>;

Layout layoutOf(dao::Database& database);

/// Returns the table with exactly this name, or nullptr if there is none.
const store::TableSchema* tableIn(const Layout& layout, const QString& name);

} // namespace storetools
