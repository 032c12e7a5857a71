#pragma once

#include "tools/store/command.h"

namespace storetools {

/// Returns the command that makes backups and reports on the daily ones.
Command backupCommand();

} // namespace storetools
