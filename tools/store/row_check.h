#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// What is wrong with the rows of the described tables, as far as those exist.
QStringList checkRows(dao::Database& database, const Layout& layout);

} // namespace storetools
