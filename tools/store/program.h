#pragma once

#include <QStringList>
#include <QTextStream>

namespace storetools {

/// Exit statuses of the program.
enum ExitStatus {
    Success = 0,
    Failure = 1,    ///< The command was not carried out, or the store is not sound.
    WrongUsage = 2, ///< The command line is not understood.
};

/// Runs the command line without the program's name: results go to `out`, failures to `err`.
ExitStatus run(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace storetools
