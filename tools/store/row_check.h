#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// Returns the findings about the rows of the described tables that exist.
QStringList checkRows(dao::Database& database, const Layout& layout);

} // namespace storetools
