#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// Compares the tables, fields and indexes of a store with the program's schema and returns the
/// differences. Additional tables and fields are not reported, because a workshop may add its own.
/// A missing table of the program's own is not reported either.
QStringList checkSchema(const Layout& layout);

/// Returns one line for each table, field and index that the program does not make, or makes
/// otherwise. They do not prevent copying the store's own tables.
QStringList checkForeignParts(const Layout& layout);

} // namespace storetools
