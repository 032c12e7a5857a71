#pragma once

#include <QString>

#include <cstdint>

namespace store {

/// Tells the user of a failed access to the store; written for a store on another computer of a
/// network. Does nothing for 0 (no error) and for 32755 (a dialog was cancelled).
///
/// A locked store ends the process with exit status 1 when the box has been answered. Lost access
/// asks: Yes starts the system's file manager, No raises 424 and so ends the process, Cancel goes
/// on. Nothing is tried again by itself. Any other number is shown, and that is all.
void ReportAccessError(std::int32_t errorNumber, const QString& errorDescription);

} // namespace store
