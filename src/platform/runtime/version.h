#pragma once

#include <QVersionNumber>

namespace runtime {

/// Returns the program's four-part file version, as defined by the build.
QVersionNumber programVersion();

} // namespace runtime
