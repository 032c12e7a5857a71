#pragma once

#include "shell/mdi_zomrel.h"

#include <memory>

namespace shell {

/// Loads the main window and shows it maximised. If loading fails, shows the run-time error box and
/// ends the process with exit status 1 before any window is visible.
std::unique_ptr<MDIZomrel>
openMainWindow(const QString& programDirectory = QCoreApplication::applicationDirPath());

} // namespace shell
