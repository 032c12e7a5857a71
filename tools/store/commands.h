#pragma once

#include "tools/store/command.h"

namespace storetools {

/// Returns all commands of zomrel-store, in the order of the help text.
const std::vector<Command>& commands();

} // namespace storetools
