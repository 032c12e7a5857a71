#pragma once

#include "platform/runtime/door.h"

namespace store {

/// Starts the system's file manager without waiting for its end. Does nothing if the system has no
/// file manager.
void startFileManager();

using FileManagerDoor = runtime::Door<void()>;
FileManagerDoor& fileManagerDoor();

} // namespace store
