#pragma once

#include "platform/runtime/door.h"
#include "platform/runtime/run_time_error.h"

namespace runtime {

/// The function that returns the explanation of an error that ends the program: what happened, what
/// is saved, and what the user can do. The run-time error box shows the explanation below the
/// description of the error. The default function returns an empty text. The desktop program
/// installs its own function at start.
using ExplanationDoor = Door<QString(const RunTimeError&)>;
ExplanationDoor& explanationDoor();

} // namespace runtime
