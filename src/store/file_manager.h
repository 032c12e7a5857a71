#pragma once

#include "platform/runtime/door.h"

namespace store {

/// Starts the system's file manager without waiting for it. Does nothing if the system has none.
void startFileManager();

using FileManagerDoor = runtime::Door<void()>;
FileManagerDoor& fileManagerDoor();

} // namespace store
