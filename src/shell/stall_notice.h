#pragma once

#include "platform/runtime/call_watch.h"

#include <QStringList>

#include <optional>

namespace shell {

/// Returns an object that shows a notice while a call to the store does not return. A blocked
/// program cannot show anything, so it starts a second process of itself with a hidden option, and
/// that process shows the notice.
std::unique_ptr<runtime::CallWatch> watchForStalls();

/// The contents of a notice about a call that does not return.
struct Stall
{
    QString what;    ///< The store that is waited for.
    int seconds = 0; ///< How long it has been waited for already.
};

/// Returns the contents of the notice if this process was started in order to show a notice,
/// otherwise no value.
std::optional<Stall> stallToShow(const QStringList& arguments);

/// Shows the notice until the standard input is closed, which happens when the blocked program
/// continues or ends. Writes a line to the standard output if the user asks to end the blocked
/// program. Returns the exit status for this process.
int showStall(const Stall& stall);

} // namespace shell
