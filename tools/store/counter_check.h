#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// Checks the store's counters, from which fields such as `Code` get their numbers in new rows.
/// Returns a finding for each counter that is missing, lower than a number in its table, or
/// exhausted. Counters are skipped if `layout`, the store's actual structure, lacks their table or
/// field.
QStringList checkCounters(dao::Database& database, const Layout& layout);

} // namespace storetools
