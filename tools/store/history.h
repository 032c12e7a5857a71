#pragma once

#include "tools/store/command.h"

namespace storetools {

/// Returns the command that prints the logged changes of an order.
Command historyCommand();

} // namespace storetools
