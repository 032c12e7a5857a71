#pragma once

#include "platform/runtime/run_time_error.h"

namespace testsupport {

/// Runs the action and returns the number of the run-time error that it throws, or 0 if it throws
/// none.
template <typename Action>
int errorOf(Action&& action)
{
    try {
        action();
    } catch (const runtime::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace testsupport
