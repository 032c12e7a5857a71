#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// Returns the findings about the rows of the schema's tables. `layout` describes the tables that
/// the store has; a missing table has no rows to check.
QStringList checkRows(dao::Database& database, const Layout& layout);

} // namespace storetools
