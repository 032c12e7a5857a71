#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace dao {
class Database;
}

namespace storetools {

/// Returns a finding for each counter of the described tables that is missing, lower than a number
/// in its table, or exhausted. Tables and fields that the store does not have are skipped.
QStringList checkCounters(dao::Database& database, const Layout& layout);

} // namespace storetools
