#pragma once

#include <functional>

namespace store {

/// Starts the system's file manager without waiting for it. Does nothing if the system has none.
void startFileManager();

using FileManagerDoor = std::function<void()>;
/// Replaces the function that starts the file manager and returns the previous one. Tests use it.
FileManagerDoor setFileManagerDoor(FileManagerDoor door);

} // namespace store
