#pragma once

#include <QStringList>
#include <QTextStream>

namespace storetools {

/// The program's exit statuses.
enum ExitStatus {
    Success = 0,
    /// The command failed, or the checked store has errors.
    Failure = 1,
    /// The command line is invalid.
    WrongUsage = 2,
};

/// Runs the command line, given without the program's name. Results are written to `out`, errors to
/// `err`.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace storetools
