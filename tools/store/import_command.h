#pragma once

#include "tools/store/command.h"

namespace storetools {

/// Returns the command that imports a store of the old format.
Command importCommand();

/// Runs the hidden command that reads the old store at `path`. Returns the exit status and writes
/// errors to the error stream.
ExitStatus readOldFile(const QString& path);

} // namespace storetools
