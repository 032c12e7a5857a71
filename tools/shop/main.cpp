#include "platform/runtime/library_paths.h"
#include "tools/shop/program.h"
#include "tools/store/system.h"

#include <QCoreApplication>

#include <csignal>

namespace {

std::atomic<bool> cancelled = false;
// A signal handler may only use lock-free objects.
static_assert(std::atomic<bool>::is_always_lock_free);

/// The first interruption ends the planning, the second one the program.
extern "C" void cancel(int signal)
{
    cancelled = true;
    std::signal(signal, SIG_DFL);
}

} // namespace

int main(int argc, char** argv)
{
    storetools::fillStandardStreams();
    runtime::useTrustedLibraryPaths();
    const QCoreApplication application(argc, argv);
    std::signal(SIGINT, cancel);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const int status = shoptools::run(QCoreApplication::arguments().mid(1), out, err, cancelled);
    return storetools::finishOutput(out, err) ? status : storetools::Failure;
}
