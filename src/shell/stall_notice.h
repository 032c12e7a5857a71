#pragma once

#include "platform/runtime/call_watch.h"

#include <QStringList>

#include <optional>

namespace shell {

/// Shows a notice while a call to the store does not return. A blocked program cannot show
/// anything, so it starts itself once more with a hidden option, and that process shows the notice.
std::unique_ptr<runtime::CallWatch> watchForStalls();

/// What a notice says.
struct Stall
{
    QString what;    ///< The store that is waited for.
    int seconds = 0; ///< How long it has been waited for already.
};

/// Returns what the notice is to say if this process was started to show one.
std::optional<Stall> stallToShow(const QStringList& arguments);

/// Shows the notice until the standard input ends, which happens when the program goes on or ends.
/// Writes a line to the standard output if the user asks to end the program. Returns the exit
/// status of this process.
int showStall(const Stall& stall);

} // namespace shell
