#pragma once

#include "tools/store/old_store/old_format.h"

namespace storetools {

/// The hidden command that reads an old file and writes what it holds to the standard output.
constexpr auto readingCommand = "read-old-store";

/// Reads an old store in a process of its own, which may end as it likes or hang, and hands on what
/// it tells. Raises 3049 with a description of the damage where the
/// file cannot be read to its end, and what the visitor raises.
void readOldStore(const QString& path, OldStoreVisitor& visitor);

/// What that other process does: its exit status. What keeps it from reading goes to the error
/// stream.
int runReading(const QString& path);

} // namespace storetools
