#pragma once

#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"

#include <exception>
#include <new>
#include <type_traits>
#include <utility>

/// The toolkit has no exception tables: no exception may travel through its frames. So every event
/// handler runs inside guarded().
namespace runtime {

/// Shows the run-time system's box for the error and ends the process with exit status 1.
/// While the box stands, no other guarded handler runs.
void endWithRunTimeBox(const RunTimeError& error);

/// True while a run-time box stands and the process is about to end.
bool isEnding();

/// Runs the handler; a failure in it shows the run-time box and ends the process.
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
        // Only a test's door throws it; the handler that asked for the end has been left.
        return;
    }
}

/// Connects a signal to a handler through the guard. The handler takes the signal's arguments or
/// none.
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
