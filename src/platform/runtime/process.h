#pragma once

#include "platform/runtime/door.h"

#include <QDate>

namespace runtime {

/// Ends the process immediately with the exit status, without a question and without saving
/// anything. The function returns only in tests, which replace the function that ends the process.
void EndProcess(int exitStatus);

/// The function that ends the process. A replacement may throw ProcessEnded to leave the current
/// handler; guarded() ignores that exception.
using EndProcessDoor = Door<void(int exitStatus)>;
EndProcessDoor& endProcessDoor();

/// Exception that a test throws instead of ending the process.
struct ProcessEnded
{
    int exitStatus;
};

/// Returns the current date without a time part.
QDate Today();

using ClockDoor = Door<QDate()>;
ClockDoor& clockDoor();

} // namespace runtime
