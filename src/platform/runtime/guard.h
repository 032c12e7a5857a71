#pragma once

#include "platform/runtime/process.h"
#include "platform/runtime/run_time_error.h"

#include <QObject>
#include <QPointer>

#include <exception>
#include <new>
#include <type_traits>
#include <utility>

/// Qt's libraries are compiled without exception tables, so an exception must not propagate through
/// them. Therefore every event handler runs inside guarded().
namespace runtime {

/// Writes the error and its sender to stderr, shows the run-time error box and ends the process
/// with exit status 1. No other guarded handler runs while the box is open. The sender is the
/// object whose signal led to the error, or nullptr if there is none.
void endWithRunTimeBox(const RunTimeError& error, const QObject* sender);

/// Returns true while a run-time error box is open and the process is about to end.
bool isEnding();

/// Runs the handler. If it throws, shows the run-time error box and ends the process.
template <typename Handler>
void guarded(Handler&& handler, const QPointer<const QObject>& sender = {}) noexcept
{
    if (isEnding())
        return;
    try {
        try {
            std::forward<Handler>(handler)();
        } catch (const RunTimeError& error) {
            endWithRunTimeBox(error, sender);
        } catch (const std::bad_alloc&) {
            endWithRunTimeBox(RunTimeError(OutOfMemory), sender);
        } catch (const std::exception& error) {
            endWithRunTimeBox(RunTimeError(InternalError, QString::fromUtf8(error.what())), sender);
        }
    } catch (const ProcessEnded&) {
        // Tests throw ProcessEnded instead of ending the process. The only purpose of the exception
        // is to leave the handler, so it is caught here and ignored.
        return;
    }
}

/// A callable object that runs a handler inside guarded(). It takes the same arguments as the
/// handler.
template <typename Handler>
struct GuardedHandler
{
    Handler handler;
    QPointer<const QObject> sender;

    template <typename... Arguments>
    auto operator()(Arguments&&... arguments)
        -> std::enable_if_t<std::is_invocable_v<Handler&, Arguments...>>
    {
        guarded([&] { handler(std::forward<Arguments>(arguments)...); }, sender);
    }
};

/// Connects a signal to a handler that runs inside guarded(). The handler takes the signal's
/// arguments or none.
template <typename Sender, typename Signal, typename Context, typename Handler>
auto on(Sender* sender, Signal signal, Context* context, Handler handler)
{
    return Context::connect(sender, signal, context, GuardedHandler<Handler>{handler, sender});
}

} // namespace runtime
