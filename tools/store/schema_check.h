#pragma once

#include "tools/store/layout.h"

#include <QStringList>

namespace storetools {

/// Compares the tables, fields and indexes of a store with the program's schema and returns the
/// differences. Additional tables and fields are not reported, because a workshop may add its own.
/// A missing table of the program's own is not reported either.
QStringList checkSchema(const Layout& layout);

} // namespace storetools
