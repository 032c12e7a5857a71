#pragma once

#include "tools/store/exit_status.h"

#include <QStringList>
#include <QTextStream>

namespace storetools {

/// Runs the command line, given without the program's name. Results are written to `out`, errors to
/// `err`.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace storetools
