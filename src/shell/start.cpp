#include "shell/start.h"

#include "platform/runtime/guard.h"

#include <QScreen>

namespace shell {

std::unique_ptr<MDIZomrel> openMainWindow(const QString& programDirectory)
{
    std::unique_ptr<MDIZomrel> window;
    runtime::guarded([&] {
        window = std::make_unique<MDIZomrel>(programDirectory);
        // Without a window manager showMaximized has no effect, so the window first gets the size
        // of the screen.
        window->setGeometry(window->screen()->availableGeometry());
        window->showMaximized();
    });
    return window;
}

} // namespace shell
