#pragma once

#include "tools/store/exit_status.h"

#include <QStringList>
#include <QTextStream>

namespace storetools {

/// Runs a command line, which is given without the program's name. Writes results to `out` and
/// errors to `err`.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace storetools
