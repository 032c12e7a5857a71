#include "shell/start.h"

#include "platform/runtime/guard.h"

#include <QScreen>

namespace shell {

std::unique_ptr<MDIZomrel> openMainWindow(const QString& programDirectory)
{
    std::unique_ptr<MDIZomrel> window;
    runtime::guarded([&] {
        window = std::make_unique<MDIZomrel>(programDirectory);
        // A desktop without a window manager does not maximise; the whole screen then serves.
        window->setGeometry(window->screen()->availableGeometry());
        window->showMaximized();
    });
    return window;
}

} // namespace shell
