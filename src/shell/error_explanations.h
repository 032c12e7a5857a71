#pragma once

#include "platform/runtime/run_time_error.h"

#include <QString>

namespace shell {

/// Returns the Hebrew explanation of an error that ends the program: what happened, what is saved,
/// and what to do next. An unknown error has a general explanation.
QString explanationOf(const runtime::RunTimeError& error);

/// Makes the run-time error box show the explanation of the error below its other text.
void installErrorExplanations();

} // namespace shell
