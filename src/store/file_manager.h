#pragma once

#include <functional>

namespace store {

/// Starts the system's file manager and does not wait for it. Where the system has none, nothing
/// happens.
void startFileManager();

using FileManagerDoor = std::function<void()>;
/// Replaces the start of the file manager and returns the former one.
FileManagerDoor setFileManagerDoor(FileManagerDoor door);

} // namespace store
