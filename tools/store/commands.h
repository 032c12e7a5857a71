#pragma once

#include "tools/store/command.h"

namespace storetools {

/// All commands in the order in which help tells of them.
const std::vector<Command>& commands();

} // namespace storetools
