#pragma once

#include "tools/store/exit_status.h"

#include <QStringList>
#include <QTextStream>

#include <functional>

namespace shoptools {

using storetools::ExitStatus;

/// Runs a command line, which is given without the program's name. Writes results to `out` and
/// errors to `err`. An interruption (SIGINT) ends the planning early, and the best plans found so
/// far are used.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err);

/// Calls `work` and returns its exit status. If `work` throws an exception, writes the exception's
/// message to `err` and returns the exit status for this kind of exception.
ExitStatus guarded(const std::function<ExitStatus()>& work, QTextStream& err);

} // namespace shoptools
