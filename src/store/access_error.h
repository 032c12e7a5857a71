#pragma once

#include <QString>

#include <cstdint>

namespace store {

/// Shows the user a message about an error that occurred during an access to the store. The
/// messages assume that the store is on another computer of the network. Does nothing for the error
/// numbers 0 (no error) and 32755 (a dialog was cancelled).
///
/// For a locked store, ends the process with exit status 1 after the user has closed the message
/// box. For a store that cannot be reached, the message box has three answers. After Yes, the
/// function starts the system's file manager and returns. After No, it throws ObjectRequired (424),
/// which ends the process. After Cancel, it only returns. The access is not retried. For any other
/// error, only shows the message.
void ReportAccessError(std::int32_t errorNumber, const QString& errorDescription);

} // namespace store
