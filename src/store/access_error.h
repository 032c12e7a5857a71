#pragma once

#include <QString>

#include <cstdint>

namespace store {

/// Shows the user an error of an access to the store. The texts assume that the store is on another
/// computer of the network. Does nothing for 0 (no error) and 32755 (a dialog was cancelled).
///
/// For a locked store, ends the process with exit status 1 after the box is answered. For lost
/// access, asks the user: Yes starts the system's file manager, No throws ObjectRequired (424) and
/// so ends the process, Cancel returns. The access is not retried. Any other error is only shown.
void ReportAccessError(std::int32_t errorNumber, const QString& errorDescription);

} // namespace store
