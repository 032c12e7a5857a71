#pragma once

#include "shell/mdi_zomrel.h"

#include <memory>

namespace shell {

/// Loads the main window and shows it maximised. A failure of the load shows the run-time box and
/// ends the process with exit status 1, before any window was seen.
std::unique_ptr<MDIZomrel>
openMainWindow(const QString& programDirectory = QCoreApplication::applicationDirPath());

} // namespace shell
