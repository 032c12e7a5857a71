#pragma once

#include "platform/runtime/door.h"
#include "platform/runtime/run_time_error.h"

namespace runtime {

/// The function that explains an error, which ends the program, to the user: what happened, what is
/// saved, and what to do. The box shows the explanation below its own text. The default explains
/// nothing; the desktop program installs its explanations at start.
using ExplanationDoor = Door<QString(const RunTimeError&)>;
ExplanationDoor& explanationDoor();

} // namespace runtime
