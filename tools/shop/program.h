#pragma once

#include "tools/store/exit_status.h"

#include <QStringList>
#include <QTextStream>

#include <functional>

namespace shoptools {

using storetools::ExitStatus;

/// Runs the command line, given without the program's name. Results are written to `out`, errors to
/// `err`. An interruption (SIGINT) during planning ends it with the best plans found so far.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err);

/// Runs the work and writes its exception, if it throws one, to `err` with the matching status.
ExitStatus guarded(const std::function<ExitStatus()>& work, QTextStream& err);

} // namespace shoptools
