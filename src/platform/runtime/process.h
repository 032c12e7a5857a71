#pragma once

#include <QDate>

#include <functional>

namespace runtime {

/// Ends the process immediately with the exit status, without a question and without saving
/// anything. It returns only if a test has replaced it.
void EndProcess(int exitStatus);

/// Replaces the function that ends the process and returns the previous one. The replacement may
/// throw ProcessEnded to leave the current handler; guarded() ignores that exception.
using EndProcessDoor = std::function<void(int exitStatus)>;
EndProcessDoor setEndProcessDoor(EndProcessDoor door);

/// Exception that a test throws instead of ending the process.
struct ProcessEnded
{
    int exitStatus;
};

/// Returns the current date without a time part. Tests can replace it.
QDate Today();

using Clock = std::function<QDate()>;
Clock setClock(Clock clock);

} // namespace runtime
