#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// Compares the tables, fields and indexes of a store with the program's schema and returns the
/// differences. Additional tables and fields are not reported, because a workshop may add some. The
/// program's own tables ("zomrel_...") are not reported if they are missing.
QStringList checkSchema(const Layout& layout);

/// Returns one line for each table, field and index that the program does not create or creates
/// differently. Such a finding does not prevent copying the store's own tables.
QStringList checkForeignParts(const Layout& layout);

} // namespace storetools
