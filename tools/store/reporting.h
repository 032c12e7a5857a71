#pragma once

#include "tools/store/exit_status.h"

#include <QStringList>
#include <QTextStream>

/// Messages that several commands print.
namespace storetools {

void print(QTextStream& stream, const QStringList& lines);

/// Prints why a store is not sound, and that nothing was changed. Returns Failure.
ExitStatus notSound(const QStringList& findings, QTextStream& err);

} // namespace storetools
