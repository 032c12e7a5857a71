#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// The counters of the described tables that are missing, stand below a number that their table
/// holds, or have no number left. Tables and fields that the layout lacks are left out.
QStringList checkCounters(dao::Database& database, const Layout& layout);

} // namespace storetools
