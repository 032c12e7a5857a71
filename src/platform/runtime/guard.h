#pragma once

#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"

#include <exception>
#include <new>
#include <type_traits>
#include <utility>

/// Qt's libraries are compiled without exception tables, so an exception must not propagate through
/// them. Therefore every event handler runs inside guarded().
namespace runtime {

/// Shows the run-time error box and ends the process with exit status 1. No other guarded handler
/// runs while the box is open.
void endWithRunTimeBox(const RunTimeError& error);

/// Returns true while a run-time error box is open and the process is about to end.
bool isEnding();

/// Runs the handler. If it throws, shows the run-time error box and ends the process.
template <typename Handler>
void guarded(Handler&& handler) noexcept
{
    if (isEnding())
        return;
    try {
        try {
            std::forward<Handler>(handler)();
        } catch (const RunTimeError& error) {
            endWithRunTimeBox(error);
        } catch (const std::bad_alloc&) {
            endWithRunTimeBox(RunTimeError(OutOfMemory));
        } catch (const std::exception& error) {
            endWithRunTimeBox(RunTimeError(InternalError, QString::fromUtf8(error.what())));
        }
    } catch (const ProcessEnded&) {
        // Tests throw ProcessEnded instead of ending the process. The handler has been left, so
        // nothing remains to be done.
        return;
    }
}

/// Connects a signal to a handler that runs inside guarded(). The handler takes the signal's
/// arguments or none.
template <typename Sender, typename Signal, typename Context, typename Handler>
auto on(Sender* sender, Signal signal, Context* context, Handler handler)
{
    return Context::connect(
        sender, signal, context,
        [handler](
            auto&&... arguments) mutable requires std::is_invocable_v<Handler&,
                                                                      decltype(arguments)...> {
            guarded([&] { handler(std::forward<decltype(arguments)>(arguments)...); });
        });
}

} // namespace runtime
