#pragma once

#include "tools/store/old_store/old_format.h"

namespace storetools {

/// Reads an old store in read-only mode and reports all data of the store's tables to the visitor.
/// Deleted rows are skipped, and moved rows are read at their current position.
///
/// Throws CorruptDatabase (3049) for a damaged file. The underlying library is not safe for damaged
/// files; it may crash or loop forever. Therefore call this function only in a separate process.
void readOldFile(const QString& path, OldStoreVisitor& visitor);

} // namespace storetools
