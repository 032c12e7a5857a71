#pragma once

namespace storetools {

/// Limits the memory of this process and disables core dumps.
void limitThisProcess();

/// Duplicates the standard output and redirects the original to the error stream, so that later
/// writes to the standard output by other code do not mix with the data. Returns the duplicate
/// descriptor, or -1 on failure.
int takeStandardOutput();

/// Returns true if the error stream is a terminal.
bool errorsGoToATerminal();

} // namespace storetools
