#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// Returns a finding for each counter of the store that is missing, lower than a number in its
/// table, or exhausted. `layout` describes the tables and fields that the store has; counters of
/// other tables and fields are skipped.
QStringList checkCounters(dao::Database& database, const Layout& layout);

} // namespace storetools
