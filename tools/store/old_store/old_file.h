#pragma once

#include "tools/store/old_store/old_format.h"

namespace storetools {

/// Reads an old store, which is opened for reading only, and tells the visitor all that it holds of
/// the store's tables. Deleted rows are left out, moved ones are read where they lie now.
///
/// Raises 3049 for damage. The library below was not made for damaged files: it may also end the
/// process, or never come back. So it is to be called in a process that has nothing to lose.
void readOldFile(const QString& path, OldStoreVisitor& visitor);

} // namespace storetools
