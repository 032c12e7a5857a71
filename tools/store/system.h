#pragma once

namespace storetools {

/// Bounds the memory of this process and keeps it from leaving a core file behind.
void limitThisProcess();

/// A descriptor of its own for what the standard output was; what anybody writes to the standard
/// output from now on goes to the error stream. -1 where that cannot be.
int takeStandardOutput();

/// True where the error stream is a terminal that someone may look at.
bool errorsGoToATerminal();

} // namespace storetools
