#pragma once

#include <QDate>

#include <functional>

namespace runtime {

/// Ends the process at once with the exit status: nothing is asked, saved or closed.
/// Does not return, unless a test has put a door of its own behind it.
void EndProcess(int exitStatus);

/// Replaces the end of the process and returns the former one. A door may throw ProcessEnded to
/// leave the handler that asked for the end; every guard lets it pass silently.
using EndProcessDoor = std::function<void(int exitStatus)>;
EndProcessDoor setEndProcessDoor(EndProcessDoor door);

/// Thrown by a test's door in place of the end that it stands for.
struct ProcessEnded
{
    int exitStatus;
};

/// The current date without a time part.
QDate Today();

using Clock = std::function<QDate()>;
Clock setClock(Clock clock);

} // namespace runtime
