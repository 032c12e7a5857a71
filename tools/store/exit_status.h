#pragma once

namespace storetools {

/// The program's exit statuses.
enum ExitStatus {
    Success = 0,
    /// The command failed, or the checked store has errors.
    Failure = 1,
    /// The command line is invalid.
    WrongUsage = 2,
};

} // namespace storetools
