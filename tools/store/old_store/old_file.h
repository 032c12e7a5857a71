#pragma once

#include "tools/store/old_store/old_format.h"

namespace storetools {

/// Reads an old store in read-only mode and reports all data of the store's tables to the visitor.
/// Deleted rows are skipped, and moved rows are read at their current position.
///
/// Throws CorruptDatabase (3049) for a damaged file. The library mdbtools, which reads the file, is
/// not safe for damaged files: it may crash or loop forever. Therefore this function must be called
/// only in a separate process.
void readOldFile(const QString& path, OldStoreVisitor& visitor);

} // namespace storetools
