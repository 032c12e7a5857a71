#pragma once

#include "tools/store/command.h"

namespace storetools {

/// Returns the command that makes backups and reports the state of the daily backups.
Command backupCommand();

} // namespace storetools
