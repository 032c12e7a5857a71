#pragma once

#include "tools/store/command.h"

namespace storetools {

/// Returns all commands, in the order of the help text.
const std::vector<Command>& commands();

} // namespace storetools
