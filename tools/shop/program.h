#pragma once

#include "tools/store/exit_status.h"

#include <QStringList>
#include <QTextStream>

#include <atomic>

namespace shoptools {

using storetools::ExitStatus;

/// Runs the command line, given without the program's name. Results are written to `out`, errors to
/// `err`. When `cancelled` becomes true, planning ends with the best plans found so far.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err,
               const std::atomic<bool>& cancelled);

} // namespace shoptools
